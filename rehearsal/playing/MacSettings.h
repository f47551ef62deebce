#pragma once

#include "platform/virtual/VirtualMac.h"
#include "rehearsal/scenario/MacConditions.h"
#include "rehearsal/scenario/MacSetup.h"

namespace vantrel::rehearsal {

/// Before the launch, but for the applications that run already.
void setUp(virtualmac::VirtualMac& mac, const MacSetup& setup);

/// Conditions that are not empty hold from now on; applications are not started. On the driver's thread.
void apply(virtualmac::VirtualMac& mac, const MacConditions& conditions);

}  // namespace vantrel::rehearsal
