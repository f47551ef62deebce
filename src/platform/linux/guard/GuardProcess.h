#pragma once

#include <sys/types.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "platform/linux/guard/GuardMessage.h"
#include "platform/linux/system/FileDescriptor.h"

namespace vantrel::linuxdesktop {

/// One guard, as the client sees it. It ends with this object and with the client. Any thread.
class GuardProcess {
  public:
    /// The guard's executable, in the folder of the running one.
    static std::string standardExecutable();

    /// Null if it cannot be started. The guard does not watch yet. It has the pipe that `presence` reads open for
    /// writing as long as it lives, and writes nothing.
    static std::unique_ptr<GuardProcess> start(const std::string& executable, const FileDescriptor& presence);
    ~GuardProcess();
    GuardProcess(const GuardProcess&) = delete;
    GuardProcess& operator=(const GuardProcess&) = delete;

    /// False once the guard is gone.
    bool isThere() const;

    void sayThatTheMainThreadRuns() const;

    /// Has the guard watch a filter over this line, which is handed on.
    void watchKeys(std::uint32_t resource, const FileDescriptor& line) const;

    pid_t process() const { return process_; }

  private:
    GuardProcess(pid_t process, FileDescriptor line) : process_(process), line_(std::move(line)) {}

    void send(const GuardMessage& message, int descriptor) const;

    const pid_t process_;
    const FileDescriptor line_;
};

}  // namespace vantrel::linuxdesktop
