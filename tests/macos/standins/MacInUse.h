#pragma once

#include "platform/virtual/VirtualMac.h"

namespace vantrel::standins {

/// The virtual Mac that every stand-in passes its calls to, while this object lives. One at a time, created before the
/// first stand-in is used and destroyed before the Mac.
class MacInUse {
  public:
    explicit MacInUse(virtualmac::VirtualMac& mac);
    ~MacInUse();
    MacInUse(const MacInUse&) = delete;
    MacInUse& operator=(const MacInUse&) = delete;
};

bool isMacInUse();

/// Any thread. Ends the process if there is none.
virtualmac::VirtualMac& mac();

/// Whether there is a Mac and its process is not over. After that, the system frees what is left.
bool processGoesOn();

/// Whether the Mac's system has that major version or a later one.
bool systemIsAtLeast(int version);

/// AppKit belongs to the main thread: a call on another one ends the process.
void requireMain(const char* call);

/// Wraps the block in an autorelease pool, as the system does for every event and every block of a queue or thread. Any
/// thread.
Block withPool(Block block);

/// The number of times that the main run loop has taken up work. Each time renews the system's snapshots. Any thread.
long turnsOfTheMainLoop();

}  // namespace vantrel::standins
