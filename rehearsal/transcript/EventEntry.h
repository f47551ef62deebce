#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/virtual/journal/Event.h"

namespace vantrel::rehearsal {

/// What an event becomes in the transcript.
struct EventEntry {
    std::string kind;
    std::string text;
    std::vector<std::string> more;
};

using EventWriter = std::function<EventEntry(const virtualmac::Event&)>;
/// By the events' kinds.
using EventWriters = std::map<std::string, EventWriter, std::less<>>;

inline bool hasField(const virtualmac::Event& event, std::string_view name) {
    for (const auto& field : event.fields) {
        if (field.first == name) return true;
    }
    return false;
}

/// Every field of that name.
inline std::vector<std::string> allFields(const virtualmac::Event& event, std::string_view name) {
    std::vector<std::string> values;
    for (const auto& field : event.fields) {
        if (field.first == name) values.push_back(field.second);
    }
    return values;
}

inline std::string titleOf(const std::string& title) {
    return title.empty() ? "(untitled)" : title;
}

inline std::string inQuotes(const std::string& text) {
    return "\"" + text + "\"";
}

}  // namespace vantrel::rehearsal
