#pragma once

#include "platform/virtual/VirtualMac.h"
#include "rehearsal/transcript/Transcript.h"

namespace vantrel::rehearsal {

/// Writes how the client stands at this moment, and what it has.
void writeEnd(virtualmac::VirtualMac& mac, Transcript& transcript);

}  // namespace vantrel::rehearsal
