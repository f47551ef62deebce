#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/linux/system/FileDescriptor.h"

namespace vantrel::linuxdesktop {

/// The process that releases the keyboard when this one cannot: the X server waits for ever for a filter that is
/// stopped or hangs. After a key press the guard asks the filter whether it still runs. If no answer comes within about
/// a second, the guard has the server close the filter's connection. The guard ends with this object and with the
/// process, and sleeps while nobody types. A guard that is silent although keys are pressed is itself asked. One thread
/// at a time.
class GuardProcess {
  public:
    using Clock = std::chrono::steady_clock;

    /// How long after a key press a guard that has not asked is asked itself, and how long it may take to answer. The
    /// second is also how long a new guard may take until it watches.
    static constexpr std::chrono::milliseconds beforeQuestion{500};
    static constexpr std::chrono::milliseconds forAnswer{1500};

    /// The guard's executable, in the folder of the running one.
    static std::string standardExecutable();

    /// Starts a guard for the X connection that owns the resource. Null if that fails. The guard does not watch yet.
    static std::unique_ptr<GuardProcess> start(const std::string& executable, std::uint32_t resource);
    ~GuardProcess();
    GuardProcess(const GuardProcess&) = delete;
    GuardProcess& operator=(const GuardProcess&) = delete;

    /// Waits a few seconds at most. False if the guard does not watch by then.
    bool waitUntilReady();
    /// Whether the guard has ever watched.
    bool hasWatched() const { return hasWatched_; }

    /// Readable when the guard asks or answers or is gone.
    int descriptor() const { return line_.get(); }
    /// When to call attend() even if nothing is readable.
    std::optional<Clock::time_point> due() const;

    void keyWasPressed(Clock::time_point now);
    /// Answers the guard, and asks it when that is due. False if it is gone or does not answer.
    bool attend(Clock::time_point now);

    pid_t process() const { return process_; }

  private:
    GuardProcess(pid_t process, FileDescriptor line)
        : process_(process), line_(std::move(line)), asked_(Clock::now()) {}

    bool send(char byte) const;

    const pid_t process_;
    const FileDescriptor line_;
    bool hasWatched_ = false;
    // The first key press since the guard last said anything.
    std::optional<Clock::time_point> pressed_;
    std::optional<Clock::time_point> asked_;
};

}  // namespace vantrel::linuxdesktop
