#pragma once

#include <string>
#include <vector>

namespace vantrel::rehearsal {

/// An event as an entry of the transcript.
struct EventEntry {
    std::string kind;
    std::string text;
    std::vector<std::string> more = {};
};

inline std::string titleOf(const std::string& title) {
    return title.empty() ? "(untitled)" : title;
}

inline std::string inQuotes(const std::string& text) {
    return "\"" + text + "\"";
}

}  // namespace vantrel::rehearsal
