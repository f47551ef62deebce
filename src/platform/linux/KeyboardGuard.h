#pragma once

#include <sys/types.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "platform/linux/FileDescriptor.h"

namespace vantrel::linuxdesktop {

/// The process that lets the keyboard go when this one cannot: the X server waits for ever for a filter that is stopped
/// or hangs. At a key press it asks the filter whether it is there, and has the server close the filter's connection
/// when no answer comes within about a second. It ends with this object and with the process, and sleeps while nobody
/// types. One thread at a time.
class KeyboardGuard {
  public:
    /// The executable of the guard, in the folder of the running one.
    static std::string standardExecutable();

    /// Starts a guard for the X connection that owns the resource and waits until it watches; null when that cannot be.
    static std::unique_ptr<KeyboardGuard> start(const std::string& executable, std::uint32_t resource);
    ~KeyboardGuard();
    KeyboardGuard(const KeyboardGuard&) = delete;
    KeyboardGuard& operator=(const KeyboardGuard&) = delete;

    /// Readable when the guard asks or has gone.
    int descriptor() const { return line_.get(); }

    /// Answers the guard. False when it has gone.
    bool answer();

    pid_t process() const { return process_; }

  private:
    KeyboardGuard(pid_t process, FileDescriptor line) : process_(process), line_(std::move(line)) {}

    bool waitUntilReady();

    const pid_t process_;
    const FileDescriptor line_;
};

}  // namespace vantrel::linuxdesktop
