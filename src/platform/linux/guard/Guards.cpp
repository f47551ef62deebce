#include "platform/linux/guard/Guards.h"

#include <fcntl.h>
#include <signal.h>

namespace vantrel::linuxdesktop {

namespace {

// The kernel sends SIGCONT when the last guard has gone that has the pipe open for writing. The guards open it
// themselves: a client that had it open when it is stopped would never be continued.
FileDescriptor makePresence() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return FileDescriptor();
    FileDescriptor reading(ends[0]);
    FileDescriptor(ends[1]).close();
    fcntl(reading.get(), F_SETOWN, getpid());
    fcntl(reading.get(), F_SETSIG, SIGCONT);
    fcntl(reading.get(), F_SETFL, O_ASYNC);
    return reading;
}

}  // namespace

std::unique_ptr<Guards> Guards::start(std::string executable) {
    std::unique_ptr<Guards> guards(new Guards(std::move(executable), makePresence()));
    bool any = false;
    for (std::size_t guard = 0; guard < count; ++guard) any = guards->keepUp(guard) || any;
    return any ? std::move(guards) : nullptr;
}

Guards::KeyLine Guards::keyLine(std::size_t guard, std::uint32_t resource, pid_t failed) {
    const std::lock_guard lock(mutex_);
    auto& process = processes_.at(guard);
    // Its line ends a moment before the process does.
    if (process && process->process() == failed) process.reset();
    if (!keepUp(guard)) return KeyLine();
    return {process->watchKeys(resource), process->process()};
}

void Guards::beat() {
    const std::lock_guard lock(mutex_);
    for (std::size_t guard = 0; guard < count; ++guard) {
        if (keepUp(guard)) processes_.at(guard)->sayThatTheMainThreadRuns();
    }
}

bool Guards::keepUp(std::size_t guard) {
    auto& process = processes_.at(guard);
    if (process && process->isThere()) return true;
    process = GuardProcess::start(executable_, presence_);
    return process != nullptr;
}

}  // namespace vantrel::linuxdesktop
