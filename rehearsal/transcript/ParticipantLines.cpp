#include "rehearsal/transcript/ParticipantLines.h"

#include <map>
#include <set>
#include <string>
#include <string_view>

namespace vantrel::rehearsal {
namespace {

using virtualmac::Event;

const std::map<std::string, std::string, std::less<>>& actionWords() {
    static const std::map<std::string, std::string, std::less<>> table = {
        {"return", "presses Return"},
        {"open-status-menu", "opens the status menu"},
        {"close-menu", "closes the menu"},
        {"close-window", "closes the window"},
        {"log-out", "logs out"},
        {"type", "types into "},
        {"press", "presses "},
        {"answer", "answers "},
        {"open-menu", "opens the menu "},
        {"choose", "chooses "},
        {"answer-permission", "answers the permission prompt"},
        {"key", "presses the key "},
        {"open", "starts "},
        {"bring-to-front", "brings to the front "},
        {"quit", "quits "},
        {"kill", "kills "},
        {"move", "moves the window of "},
        {"resize", "resizes the window of "},
        {"minimise", "minimises the window of "},
        {"restore", "restores the window of "},
        {"close", "closes the window of "},
        {"new-window", "opens a window of "},
        {"full-screen", "toggles full screen of "},
        {"swipe", "swipes to the "}};
    return table;
}

std::string deed(const Event& event) {
    const auto space = event.text.find(' ');
    if (event.text.starts_with("command ")) {
        // An upper-case letter means Shift as well.
        const char key = event.text.back();
        const bool isLower = key >= 'a' && key <= 'z';
        return std::string("presses ") + (isLower ? "Command-" : "Command-Shift-") +
               (isLower ? static_cast<char>(key - 'a' + 'A') : key);
    }
    const auto found = actionWords().find(event.text.substr(0, space));
    if (found == actionWords().end()) return event.text;
    const auto what = space == std::string::npos ? "" : event.text.substr(space + 1);
    return found->second + (space == std::string::npos ? "" : titleOf(what));
}

/// Places and sizes are numbers, everything else is a text.
std::string value(const Event& event) {
    static const std::set<std::string, std::less<>> numeric = {"move", "resize"};
    const auto text = event.field("value");
    return numeric.contains(event.text.substr(0, event.text.find(' '))) ? " to " + text : ": " + inQuotes(text);
}

}  // namespace

EventEntry participantEntry(const Event& event) {
    EventEntry entry{"participant", deed(event), {}};
    if (hasField(event, "value")) entry.text += value(event);
    if (hasField(event, "times")) entry.text += ", " + event.field("times") + " times";
    if (hasField(event, "ignored")) entry.more.push_back("ignored: " + event.field("ignored"));
    return entry;
}

}  // namespace vantrel::rehearsal
