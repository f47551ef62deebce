#pragma once

#include "platform/virtual/journal/Event.h"
#include "rehearsal/transcript/EventEntry.h"

namespace vantrel::rehearsal {

// Describes what the participant does.

EventEntry entryOf(virtualmac::Deed deed, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::DesktopDeed deed, const virtualmac::Happening& event);

}  // namespace vantrel::rehearsal
