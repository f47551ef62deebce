#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "practice/configuration/PracticeSession.h"
#include "practice/program/ListenAddress.h"

namespace vantrel::practice {

struct CommandLineError {
    std::string message;
};

/// The program's options.
struct CommandLine {
    static constexpr int defaultPort = 8787;

    bool help = false;
    ListenAddress listenAddress;
    int port = defaultPort;
    bool exitWithStandardInput = false;
    std::optional<double> seconds;
    std::optional<double> lostAfterSeconds;
    std::optional<std::string> configurationFile;
    std::optional<std::string> passwordFile;
    std::string publicAddress;
    std::vector<PracticeSession> sessions;
    std::vector<std::pair<std::string, SessionStatus>> statuses;

    /// The arguments without the program's name.
    static std::variant<CommandLine, CommandLineError> read(const std::vector<std::string>& arguments);
    static std::string_view helpText();
};

}  // namespace vantrel::practice
