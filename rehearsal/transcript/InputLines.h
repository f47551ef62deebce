#pragma once

#include "rehearsal/transcript/EventEntry.h"

namespace vantrel::rehearsal {

/// Keys, taps and overlays.
const EventWriters& inputWriters();

}  // namespace vantrel::rehearsal
