#pragma once

#include "platform/virtual/journal/Event.h"
#include "rehearsal/transcript/Transcript.h"

namespace vantrel::rehearsal {

/// Writes an event of the virtual Mac into a transcript.
void write(const virtualmac::Event& event, Transcript& transcript);

}  // namespace vantrel::rehearsal
