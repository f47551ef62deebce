#pragma once

#include "platform/virtual/journal/Event.h"
#include "rehearsal/transcript/EventEntry.h"

namespace vantrel::rehearsal {

// Describes keys, taps and overlays.

EventEntry entryOf(virtualmac::KeyboardEvent kind, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::OverlayEvent kind, const virtualmac::Happening& event);

}  // namespace vantrel::rehearsal
