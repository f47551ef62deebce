#pragma once

#include <sys/types.h>

#include "platform/linux/system/FileDescriptor.h"

namespace vantrel::linuxdesktop {

/// What the kernel says of the client. Its file stays open: a look is one call, and a process that gets the client's
/// number later is not taken for it. One thread.
class ClientState {
  public:
    explicit ClientState(pid_t client);

    /// Whether a signal has stopped it; a debugger's stop is none. False once the client is gone.
    bool isStopped() const;

  private:
    const FileDescriptor file_;
};

}  // namespace vantrel::linuxdesktop
