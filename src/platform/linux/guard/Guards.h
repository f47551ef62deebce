#pragma once

#include <sys/types.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "platform/linux/guard/GuardProcess.h"

namespace vantrel::linuxdesktop {

/// The two processes beside the client that give a person the keyboard and the screens back when the client cannot.
/// Each does the whole work by itself, so that one may be stopped or killed together with the client. One that is gone
/// is replaced.
///
/// A client that is stopped has nobody to free what it holds once both are gone. So the kernel continues it then, and
/// ends a guard that is itself stopped. Any thread.
class Guards {
  public:
    static constexpr std::size_t count = 2;

    /// A line from one guard to a keyboard filter.
    struct KeyLine {
        FileDescriptor line;
        pid_t guard = 0;
    };

    /// Null if none can be started.
    static std::unique_ptr<Guards> start(std::string executable);

    /// A line from a guard that is started first if it is gone, or if it is `failed`. Not open if that is impossible.
    KeyLine keyLine(std::size_t guard, std::uint32_t resource, pid_t failed = 0);

    /// To be called by the main thread every mainThreadBeat. Also replaces a guard that is gone.
    void beat();

  private:
    Guards(std::string executable, FileDescriptor presence)
        : executable_(std::move(executable)), presence_(std::move(presence)) {}

    bool keepUp(std::size_t guard);

    const std::string executable_;
    // The reading end of a pipe that only guards have open for writing.
    const FileDescriptor presence_;
    std::mutex mutex_;
    std::array<std::unique_ptr<GuardProcess>, count> processes_;
};

}  // namespace vantrel::linuxdesktop
