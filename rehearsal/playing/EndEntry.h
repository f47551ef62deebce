#pragma once

#include "platform/virtual/VirtualMac.h"
#include "rehearsal/transcript/Transcript.h"

namespace vantrel::rehearsal {

/// Writes the client's state at this moment, and what it holds.
void writeEnd(virtualmac::VirtualMac& mac, Transcript& transcript);

}  // namespace vantrel::rehearsal
