#pragma once

#include "platform/virtual/journal/Event.h"
#include "rehearsal/transcript/EventEntry.h"

namespace vantrel::rehearsal {

// What the participant does, in words.

EventEntry entryOf(virtualmac::Deed deed, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::DesktopDeed deed, const virtualmac::Happening& event);

}  // namespace vantrel::rehearsal
