#pragma once

#include "platform/virtual/journal/Event.h"
#include "rehearsal/transcript/Transcript.h"

namespace vantrel::rehearsal {

/// Writes an event of the virtual Mac into a transcript. A kind that is not known is written as it is, with its fields.
void write(const virtualmac::Event& event, Transcript& transcript);

}  // namespace vantrel::rehearsal
