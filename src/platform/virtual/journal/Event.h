#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/virtual/journal/EventKind.h"
#include "platform/virtual/journal/Field.h"

namespace vantrel::virtualmac {

using Fields = std::vector<std::pair<Field, std::string>>;

/// What happened, without its time. Kinds, their texts and their fields: EventKind.h.
struct Happening {
    EventKind kind;
    std::string text = {};
    Fields fields = {};

    bool operator==(const Happening&) const = default;

    bool has(Field name) const {
        return std::any_of(fields.begin(), fields.end(), [name](const auto& each) { return each.first == name; });
    }

    /// The first field of that name; empty when there is none.
    std::string field(Field name) const {
        for (const auto& [key, value] : fields) {
            if (key == name) return value;
        }
        return {};
    }

    /// Every field of that name.
    std::vector<std::string> all(Field name) const {
        std::vector<std::string> values;
        for (const auto& [key, value] : fields) {
            if (key == name) values.push_back(value);
        }
        return values;
    }
};

using Happenings = std::vector<Happening>;

/// Something that happened on the virtual Mac and that someone outside can see.
struct Event : Happening {
    /// Seconds of uptime.
    double time = 0;
};

/// Called on whatever thread acts, one event at a time, in the order of the events. It may look at the Mac and post to
/// it, but neither waits nor makes a platform call.
using EventSink = std::function<void(const Event&)>;

}  // namespace vantrel::virtualmac
