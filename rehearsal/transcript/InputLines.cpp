#include "rehearsal/transcript/InputLines.h"

namespace vantrel::rehearsal {
namespace {

using virtualmac::Field;
using virtualmac::Happening;
using virtualmac::KeyboardEvent;
using virtualmac::OverlayEvent;

EventEntry delivered(const Happening& event) {
    const auto application = event.field(Field::application);
    return {"key", event.text + " reaches " + (application.empty() ? "the system" : application)};
}

}  // namespace

EventEntry entryOf(KeyboardEvent kind, const Happening& event) {
    switch (kind) {
        case KeyboardEvent::tapCreated:
            return {"tap", "is installed"};
        case KeyboardEvent::tapRefused:
            return {"tap", "is refused"};
        case KeyboardEvent::tapRemoved:
            return {"tap", "is removed"};
        case KeyboardEvent::tapDisabled:
            return {"tap", "is disabled by the system: " + event.text};
        case KeyboardEvent::swallowed:
            return {"key", event.text + " is swallowed"};
        case KeyboardEvent::delivered:
            return delivered(event);
    }
    return {};
}

EventEntry entryOf(OverlayEvent kind, const Happening& event) {
    switch (kind) {
        case OverlayEvent::shown:
            return {"overlay", "is shown at " + event.text + " on level " + event.field(Field::level),
                    event.all(Field::label)};
        case OverlayEvent::hidden:
            return {"overlay", "is hidden at " + event.text};
        case OverlayEvent::raised:
            return {"overlay", "is raised at " + event.text};
        case OverlayEvent::closed:
            return {"overlay", "is closed at " + event.text};
        case OverlayEvent::level:
            return {"overlay", "is on level " + event.field(Field::level) + " at " + event.text};
        case OverlayEvent::unseen:
            return {"overlay", "is not let into the full screen at " + event.text};
        case OverlayEvent::seen:
            return {"overlay", "is seen again at " + event.text};
    }
    return {};
}

}  // namespace vantrel::rehearsal
