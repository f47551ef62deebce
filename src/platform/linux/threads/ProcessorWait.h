#pragma once

#include <sys/types.h>

#include <chrono>

#include "platform/linux/system/FileDescriptor.h"

namespace vantrel::linuxdesktop {

/// How long a thread of this process has been ready to run while others had the processors. A thread that hangs waits
/// for something else, or runs. Any thread.
class ProcessorWait {
  public:
    explicit ProcessorWait(pid_t thread);

    /// Since the thread began. Always zero if the kernel does not count it.
    std::chrono::nanoseconds total() const;

  private:
    const FileDescriptor file_;
};

}  // namespace vantrel::linuxdesktop
