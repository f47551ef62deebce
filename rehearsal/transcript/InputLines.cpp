#include "rehearsal/transcript/InputLines.h"

#include <string>

namespace vantrel::rehearsal {
namespace {

using virtualmac::Event;

EventEntry swallowed(const Event& event) {
    return {"key", event.text + " is swallowed", {}};
}

EventEntry delivered(const Event& event) {
    const auto application = event.field("application");
    return {"key", event.text + (application.empty() ? " reaches the system" : " reaches " + application), {}};
}

EventWriter tap(std::string what) {
    return [what = std::move(what)](const Event&) { return EventEntry{"tap", what, {}}; };
}

EventWriter overlay(std::string before) {
    return [before = std::move(before)](const Event& event) { return EventEntry{"overlay", before + event.text, {}}; };
}

EventEntry overlayShown(const Event& event) {
    return {"overlay", "is shown at " + event.text + " on level " + event.field("level"), allFields(event, "label")};
}

EventEntry overlayLevel(const Event& event) {
    return {"overlay", "is on level " + event.field("level") + " at " + event.text, {}};
}

}  // namespace

const EventWriters& inputWriters() {
    static const EventWriters table = {
        {"key-swallowed", swallowed},
        {"key-delivered", delivered},
        {"keyboard-tap-created", tap("is installed")},
        {"keyboard-tap-refused", tap("is refused")},
        {"keyboard-tap-removed", tap("is removed")},
        {"tap-disabled",
         [](const Event& event) {
             return EventEntry{"tap", "is disabled by the system: " + event.text, {}};
         }},
        {"overlay-shown", overlayShown},
        {"overlay-level", overlayLevel},
        {"overlay-hidden", overlay("is hidden at ")},
        {"overlay-raised", overlay("is raised at ")},
        {"overlay-closed", overlay("is closed at ")},
    };
    return table;
}

}  // namespace vantrel::rehearsal
