#pragma once

#include <sys/types.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "platform/linux/guard/GuardProcess.h"
#include "platform/linux/threads/SerialQueue.h"

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
        /// The guard's process, once it has the line.
        std::shared_ptr<const std::atomic<pid_t>> guard;
    };

    /// Null if none can be started.
    static std::unique_ptr<Guards> start(std::string executable);

    /// A line from a guard that is started first if it is gone, or if it is `failed`. Does not wait for that: the
    /// guard's file may lie on a slow disk. The line ends if it is impossible.
    KeyLine keyLine(std::size_t guard, std::uint32_t resource, pid_t failed = 0);

    /// False once none has been there for longer than it takes to replace one.
    bool areThere();

    /// To be called by the main thread every mainThreadBeat. Also has a guard replaced that is gone.
    void beat();

  private:
    Guards(std::string executable, FileDescriptor presence)
        : executable_(std::move(executable)), presence_(std::move(presence)) {}

    bool isThere(std::size_t guard);
    /// Takes as long as the disk does. On the keeper's thread, except at the start.
    bool keepUp(std::size_t guard);
    void drop(std::size_t guard, pid_t failed);

    const std::string executable_;
    // The reading end of a pipe that only guards have open for writing.
    const FileDescriptor presence_;
    std::mutex mutex_;
    std::array<std::unique_ptr<GuardProcess>, count> processes_;
    // When one was last seen.
    std::chrono::steady_clock::time_point seen_ = std::chrono::steady_clock::now();
    // Last, so that it has ended before the others go.
    SerialQueue keeper_;
};

}  // namespace vantrel::linuxdesktop
