#include "platform/linux/guard/Guards.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>

#include <system_error>

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
    std::unique_ptr<Guards> guards;
    try {
        guards.reset(new Guards(std::move(executable), makePresence()));
    } catch (const std::system_error&) {
        return nullptr;  // No thread is available.
    }
    bool any = false;
    for (std::size_t guard = 0; guard < count; ++guard) any = guards->keepUp(guard) || any;
    return any ? std::move(guards) : nullptr;
}

Guards::KeyLine Guards::keyLine(std::size_t guard, std::uint32_t resource, pid_t failed) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return KeyLine();
    KeyLine line{FileDescriptor(ends[0]), nullptr};
    const auto process = std::make_shared<std::atomic<pid_t>>(0);
    line.guard = process;
    keeper_.async([this, guard, resource, failed, process, others = std::make_shared<FileDescriptor>(ends[1])] {
        drop(guard, failed);
        if (!keepUp(guard)) return;
        const std::lock_guard lock(mutex_);
        *process = processes_.at(guard)->process();
        processes_.at(guard)->watchKeys(resource, *others);
    });
    return line;
}

void Guards::beat() {
    for (std::size_t guard = 0; guard < count; ++guard) {
        const std::lock_guard lock(mutex_);
        if (isThere(guard)) {
            processes_.at(guard)->sayThatTheMainThreadRuns();
        } else {
            keeper_.async([this, guard] { keepUp(guard); });
        }
    }
}

bool Guards::areThere() {
    constexpr std::chrono::seconds toReplaceOne{3};
    const std::lock_guard lock(mutex_);
    for (std::size_t guard = 0; guard < count; ++guard) isThere(guard);
    return std::chrono::steady_clock::now() - seen_ < toReplaceOne;
}

bool Guards::isThere(std::size_t guard) {
    const auto& process = processes_.at(guard);
    if (!process || !process->isThere()) return false;
    seen_ = std::chrono::steady_clock::now();
    return true;
}

bool Guards::keepUp(std::size_t guard) {
    std::unique_lock lock(mutex_);
    if (isThere(guard)) return true;
    auto gone = std::move(processes_.at(guard));
    lock.unlock();
    gone.reset();
    auto started = GuardProcess::start(executable_, presence_);
    lock.lock();
    processes_.at(guard) = std::move(started);
    return processes_.at(guard) != nullptr;
}

// Its line ends a moment before the process does.
void Guards::drop(std::size_t guard, pid_t failed) {
    // Waits for the process's end, after the lock.
    std::unique_ptr<GuardProcess> dropped;
    const std::lock_guard lock(mutex_);
    auto& process = processes_.at(guard);
    if (process && process->process() == failed) dropped = std::move(process);
}

}  // namespace vantrel::linuxdesktop
