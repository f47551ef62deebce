#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::simulation {

/// What the model needs to know of the file that was played. What a prelude has set before is not known.
struct Scenario {
    /// Of a text that cannot be read, nothing is known.
    static Scenario read(const std::string& text);

    bool known = false;         // false if the text could not be read
    bool begins = false;        // with a prelude, whose file is not known
    std::int64_t calendar = 0;  // seconds since 1970 at the launch
    std::map<std::string, std::string, std::less<>> settings;
    std::map<std::string, std::string, std::less<>> identifiers;  // of applications, by their names
    std::optional<std::string> accessibility;
    std::optional<std::string> microphone;
    std::optional<std::string> camera;
    bool lateFront = false;       // the client comes to the front 2 seconds after it has asked
    bool comesWhenAsked = false;  // or without delay
    std::string bundleIdentifier = "biz.quorrin.vantrel";
    std::string address = "https://server.vantrel.example";
    std::int64_t latency = 50;  // milliseconds
    bool setsLatency = false;
    bool bendsReplies = false;  // a reply rule at the begin
    bool bendsTimes = false;    // one that does more than to give another status or body
    bool separateSpaces = true;
    std::vector<std::vector<std::string>> displays;  // name, x, y, width, height
};

}  // namespace vantrel::simulation
