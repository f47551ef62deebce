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

/// An event without its time. EventKind.h lists kinds, texts and fields.
struct Happening {
    EventKind kind;
    std::string text = {};
    Fields fields = {};

    bool operator==(const Happening&) const = default;

    bool has(Field name) const {
        return std::any_of(fields.begin(), fields.end(), [name](const auto& each) { return each.first == name; });
    }

    /// The first field of that name. Empty if there is none.
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

/// An event on the virtual Mac that can be seen from outside.
struct Event : Happening {
    /// Seconds of uptime.
    double time = 0;
};

/// Called on the acting thread, one event at a time, in the order of the events. It may look at the Mac and post to it,
/// but must not wait or make a platform call.
using EventSink = std::function<void(const Event&)>;

}  // namespace vantrel::virtualmac
