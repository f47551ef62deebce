#pragma once

#include "platform/virtual/VirtualMac.h"
#include "rehearsal/scenario/MacConditions.h"
#include "rehearsal/scenario/MacSetup.h"

namespace vantrel::rehearsal {

/// Prepares the Mac before the launch, except for applications that already run.
void setUp(virtualmac::VirtualMac& mac, const MacSetup& setup);

/// Conditions that are not empty hold from now on. Applications are not started. On the driver's thread.
void apply(virtualmac::VirtualMac& mac, const MacConditions& conditions);

}  // namespace vantrel::rehearsal
