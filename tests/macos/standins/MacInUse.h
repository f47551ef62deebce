#pragma once

#include "platform/virtual/VirtualMac.h"

namespace vantrel::standins {

/// The virtual Mac that every stand-in hands its calls on to, for as long as this lives. One at a time, made before the
/// first stand-in is used and gone before the Mac is.
class MacInUse {
  public:
    explicit MacInUse(virtualmac::VirtualMac& mac);
    ~MacInUse();
    MacInUse(const MacInUse&) = delete;
    MacInUse& operator=(const MacInUse&) = delete;
};

/// Any thread. Ends the process when there is none.
virtualmac::VirtualMac& mac();

/// Whether there is a Mac, and the process on it is not over: what is left behind then, the system takes away.
bool processGoesOn();

/// Makes the block one that has an autorelease pool, as the system gives one to every event, and to every block of a
/// queue and of a thread of its own. Any thread.
Block withPool(Block block);

/// Counts what the main run loop has taken up. What is a snapshot of the system's is renewed by it. Any thread.
long turnsOfTheMainLoop();

}  // namespace vantrel::standins
