#pragma once

#include "platform/virtual/journal/Event.h"
#include "rehearsal/transcript/EventEntry.h"

namespace vantrel::rehearsal {

// Describes what the client does and shows.

EventEntry entryOf(virtualmac::ClientEvent kind, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::NetworkEvent kind, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::AlertEvent kind, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::WindowEvent kind, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::ViewEvent kind, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::ControlEvent kind, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::StatusItemEvent kind, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::MenuEvent kind, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::PermissionEvent kind, const virtualmac::Happening& event);

}  // namespace vantrel::rehearsal
