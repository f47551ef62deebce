#include "practice/program/CommandLine.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <system_error>

#include "practice/configuration/SessionCode.h"

namespace vantrel::practice {

namespace {

constexpr std::string_view usage = R"(Usage: vantrel-practice [OPTION]...
A practice server for the Vantrel client, on 127.0.0.1 by default.

  --listen ADDRESS         the address to listen on (127.0.0.1), IPv4 or IPv6 in numbers; one that others can reach
                           needs a password
  --password-file FILE     the password of the trainer's page and of the control interface: the file's first line
  --port N                 port to listen on (8787); 0 takes a free one
  --session CODE[=TITLE]   a session to offer; may be given several times
  --status CODE=STATUS     its status: ACTIVE (as offered), WAITING or ENDED
  --config FILE.yaml       sessions and the version answer from a file
  --public-address URL     address that meeting links begin with (the address of each request)
  --lost-after SECONDS     silence after which the trainer's page shows a participant as lost (40)
  --for SECONDS            end by itself after that time
  --exit-with-stdin        end when standard input is closed
  --help                   show this text

Without any session there is one, PROVA. The first line printed is the address, the others are the sessions.
SIGTERM and SIGINT end the server. Exit status: 0 ended as asked, 1 the port is taken, 2 bad options or file.
)";

/// Stores an option's value in the command line. Returns what is wrong with it, or an empty text.
std::string readValue(CommandLine& line, const std::string& option, const std::string& value) {
    if (option == "--port") {
        int port = 0;
        const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), port);
        if (error != std::errc() || end != value.data() + value.size() || port < 0 || port > 65535) {
            return "--port: '" + value + "' is not a port number";
        }
        line.port = port;
        return {};
    }
    if (option == "--listen") {
        const auto address = ListenAddress::parse(value);
        if (!address) return "--listen: '" + value + "' is not an IPv4 or IPv6 address in numbers";
        line.listenAddress = *address;
        return {};
    }
    if (option == "--password-file") {
        line.passwordFile = value;
        return {};
    }
    if (option == "--for" || option == "--lost-after") {
        char* end = nullptr;
        const double seconds = std::strtod(value.c_str(), &end);
        if (value.empty() || *end != '\0' || !std::isfinite(seconds) || seconds < 0) {
            return option + ": '" + value + "' is not a number of seconds";
        }
        (option == "--for" ? line.seconds : line.lostAfterSeconds) = seconds;
        return {};
    }
    if (option == "--config") {
        line.configurationFile = value;
        return {};
    }
    if (option == "--public-address") {
        if (value.empty()) return "--public-address: the address is empty";
        line.publicAddress = value;
        return {};
    }

    const std::size_t equals = value.find('=');
    const std::string code = value.substr(0, equals);
    if (!isSessionCode(code)) {
        return option + ": '" + code + "' is not a session code (letters, digits, '-', '.', '_' and '~')";
    }
    if (option == "--session") {
        PracticeSession session;
        session.code = upperCaseCode(code);
        if (equals != std::string::npos) session.title = value.substr(equals + 1);
        line.sessions.push_back(std::move(session));
        return {};
    }
    const auto status = sessionStatusFrom(equals == std::string::npos ? std::string_view()
                                                                      : std::string_view(value).substr(equals + 1));
    if (!status) return "--status: '" + value + "' is not CODE=ACTIVE, CODE=WAITING or CODE=ENDED";
    line.statuses.emplace_back(upperCaseCode(code), *status);
    return {};
}

bool takesValue(const std::string& option) {
    return option == "--port" || option == "--for" || option == "--config" || option == "--public-address" ||
           option == "--listen" || option == "--password-file" || option == "--session" || option == "--status" ||
           option == "--lost-after";
}

}  // namespace

std::variant<CommandLine, CommandLineError> CommandLine::read(const std::vector<std::string>& arguments) {
    CommandLine line;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string& option = arguments[index];
        if (option == "--help") {
            line.help = true;
        } else if (option == "--exit-with-stdin") {
            line.exitWithStandardInput = true;
        } else if (!takesValue(option)) {
            return CommandLineError{"unknown option '" + option + "'"};
        } else if (index + 1 == arguments.size()) {
            return CommandLineError{option + ": the value is missing"};
        } else {
            const std::string wrong = readValue(line, option, arguments[++index]);
            if (!wrong.empty()) return CommandLineError{wrong};
        }
    }
    if (!line.listenAddress.isLoopback() && !line.passwordFile) {
        return CommandLineError{"--listen " + line.listenAddress.text() +
                                ": others can reach the trainer's page there; give it a password with --password-file"};
    }
    return line;
}

std::string_view CommandLine::helpText() {
    return usage;
}

}  // namespace vantrel::practice
