#pragma once

#include "rehearsal/transcript/EventEntry.h"

namespace vantrel::rehearsal {

/// What the participant does, in words.
EventEntry participantEntry(const virtualmac::Event& event);

}  // namespace vantrel::rehearsal
