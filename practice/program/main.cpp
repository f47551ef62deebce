#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "practice/PracticeServer.h"
#include "practice/program/CommandLine.h"
#include "practice/program/ConfigurationFile.h"
#include "practice/program/HttpFront.h"
#include "practice/program/PasswordFile.h"
#include "practice/program/StopSignal.h"

namespace {

using vantrel::practice::CommandLine;
using vantrel::practice::PracticeConfiguration;
using vantrel::practice::PracticeSession;
using vantrel::practice::StopSignal;

constexpr int portTaken = 1;
constexpr int badUse = 2;

volatile std::sig_atomic_t descriptorThatStops = -1;

extern "C" void stopOnSignal(int) {
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(descriptorThatStops, &byte, 1);
}

double secondsSince1970() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

int complain(const std::string& message, int status) {
    std::cerr << "vantrel-practice: " << message << "\n";
    return status;
}

/// Adds the command line's sessions and statuses. Returns what is wrong, or an empty text.
std::string complete(PracticeConfiguration& configuration, const CommandLine& line) {
    auto& sessions = configuration.sessions;
    const auto find = [&](const std::string& code) {
        return std::find_if(sessions.begin(), sessions.end(),
                            [&](const auto& session) { return session.code == code; });
    };
    for (const PracticeSession& session : line.sessions) {
        if (find(session.code) != sessions.end()) return "there are two sessions " + session.code;
        sessions.push_back(session);
    }
    if (sessions.empty()) {
        PracticeSession session;
        session.code = "PROVA";
        sessions.push_back(session);
    }
    for (const auto& [code, status] : line.statuses) {
        const auto session = find(code);
        if (session == sessions.end()) return "--status: there is no session " + code;
        session->status = status;
    }
    if (!line.publicAddress.empty()) configuration.publicAddress = line.publicAddress;
    if (line.lostAfterSeconds) configuration.contactLostAfterSeconds = *line.lostAfterSeconds;
    return {};
}

/// Returns when the signal is raised, the time is up, or standard input is closed (if it is watched).
void waitForTheEnd(const StopSignal& stop, std::optional<double> seconds, bool watchStandardInput) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    while (true) {
        int milliseconds = -1;
        if (seconds) {
            const double left = *seconds - std::chrono::duration<double>(Clock::now() - start).count();
            if (left <= 0) return;
            milliseconds = static_cast<int>(std::ceil(std::min(left, 3600.0) * 1000));
        }
        // poll() skips negative descriptors.
        std::array<pollfd, 2> entries{
            {{stop.descriptor(), POLLIN, 0}, {watchStandardInput ? STDIN_FILENO : -1, POLLIN, 0}}};
        if (poll(entries.data(), entries.size(), milliseconds) < 0) continue;
        if (entries[0].revents != 0) return;
        if (entries[1].revents != 0) {
            std::array<char, 4096> ignored{};
            if (read(STDIN_FILENO, ignored.data(), ignored.size()) <= 0) return;
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    const auto arguments = CommandLine::read(std::vector<std::string>(argv + 1, argv + argc));
    if (const auto* error = std::get_if<vantrel::practice::CommandLineError>(&arguments)) {
        return complain(error->message + "\nTry 'vantrel-practice --help'.", badUse);
    }
    const CommandLine& line = std::get<CommandLine>(arguments);
    if (line.help) {
        std::cout << CommandLine::helpText();
        return EXIT_SUCCESS;
    }

    PracticeConfiguration configuration;
    if (line.configurationFile) {
        auto read = vantrel::practice::readConfigurationFile(*line.configurationFile);
        if (const auto* error = std::get_if<vantrel::practice::ConfigurationError>(&read)) {
            std::cerr << error->message << "\n";
            return badUse;
        }
        configuration = std::move(std::get<PracticeConfiguration>(read));
    }
    if (line.passwordFile) {
        auto password = vantrel::practice::readPasswordFile(*line.passwordFile);
        if (const auto* error = std::get_if<vantrel::practice::PasswordError>(&password)) {
            return complain(error->message, badUse);
        }
        configuration.trainerPassword = std::move(std::get<std::string>(password));
    }
    const std::string wrong = complete(configuration, line);
    if (!wrong.empty()) return complain(wrong, badUse);

    const StopSignal stop;
    if (!stop.isValid()) return complain("the system has no pipe left", EXIT_FAILURE);
    descriptorThatStops = stop.raisingDescriptor();
    struct sigaction action {};
    action.sa_handler = stopOnSignal;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
    action.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &action, nullptr);

    vantrel::practice::PracticeServer practice(configuration, secondsSince1970);
    vantrel::practice::HttpFront front(practice);
    const std::string& address = line.listenAddress.text();
    const std::optional<int> port = front.listen(address, line.port);
    if (!port) return complain("port " + std::to_string(line.port) + " on " + address + " is taken", portTaken);

    std::cout << "Practice server on " << line.listenAddress.url(*port) << std::endl;
    for (const PracticeSession& session : configuration.sessions) {
        std::cout << "Session " << session.code << " (" << vantrel::practice::textOf(session.status)
                  << "): " << session.title << std::endl;
    }

    waitForTheEnd(stop, line.seconds, line.exitWithStandardInput);
    return EXIT_SUCCESS;
}
