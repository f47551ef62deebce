// The C library as the product's objects see it: the linker's --wrap redirects their calls of these functions here. So
// no test signals a process of its computer or writes to the client's output.
#include <poll.h>
#include <sys/time.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/clibrary/WatchLine.h"
#include "tests/macos/standins/include/sys/sysctl.h"
#include "tests/macos/standins/runtime/Classes.h"

using namespace vantrel::standins;

namespace {

constexpr int uptimeClock = 8;
constexpr int calendarClock = 0;
constexpr double nanosecondsPerSecond = 1e9;

}  // namespace

namespace vantrel::standins {

WatchLine& watchLine() {
    static WatchLine line;
    return line;
}

}  // namespace vantrel::standins

extern "C" {

// The text is as it stands in the source: "macOS 14.0, *".
bool vantrel_available(const char* system) {
    int version = 0;
    // The result is looked at; a version is far from the largest number.
    // NOLINTNEXTLINE(bugprone-unchecked-string-to-number-conversion)
    if (std::sscanf(system, "macOS %d.0, *", &version) != 1) fatal("a system that is not stood in for");
    return systemIsAtLeast(version);
}

// No test forks the process that it runs in.
pid_t __wrap_fork() {
    constexpr pid_t watcher = 4711;
    if (watchLine().hasWatcher) return watcher;
    errno = EAGAIN;
    return -1;
}

int __wrap_kill(pid_t process, int signal) {
    if (process <= 0) fatal("a signal to a group of processes");
    if (mac().parts().processLauncher.sendSignal(process, signal)) return 0;
    errno = ESRCH;
    return -1;
}

// Whole lines on standard output: the client's log.
ssize_t __wrap_write(int descriptor, const void* bytes, std::size_t size) {
    if (descriptor == STDERR_FILENO) return write(descriptor, bytes, size);
    if (descriptor != STDOUT_FILENO && watchLine().hasWatcher) {
        watchLine().heard.append(static_cast<const char*>(bytes), size);
        return static_cast<ssize_t>(size);
    }
    if (descriptor != STDOUT_FILENO) fatal("the client writes to something else than its standard streams");
    // A long line comes in pieces.
    static std::string line;
    line.append(static_cast<const char*>(bytes), size);
    if (!line.ends_with('\n')) return static_cast<ssize_t>(size);
    line.pop_back();
    mac().parts().log.print(std::exchange(line, {}));
    return static_cast<ssize_t>(size);
}

int __wrap_fcntl(int descriptor, int, ...) {
    if (descriptor != STDOUT_FILENO && descriptor != STDERR_FILENO && !watchLine().hasWatcher)
        fatal("the client changes something else than its standard streams");
    return 0;
}

// Whatever the tests run on.
int __wrap_isatty(int) {
    return 0;
}

// Standard output accepts everything at once.
int __wrap_poll(pollfd*, nfds_t, int milliseconds) {
    if (milliseconds != 0) fatal("the client waits for standard output");
    return 1;
}

std::uint64_t __wrap_clock_gettime_nsec_np(int clock) {
    const vantrel::Clock& clocks = mac().parts().clock;
    if (clock == uptimeClock) return static_cast<std::uint64_t>(mac().engine().scheduler.now());
    if (clock != calendarClock) fatal("a clock that is not stood in for");
    return static_cast<std::uint64_t>(clocks.secondsSince1970() * nanosecondsPerSecond);
}

// The facts about one process. Its number also serves as its start time: both only increase.
int __wrap_sysctl(int* name, unsigned count, void* old, std::size_t* oldSize, void* fresh, std::size_t) {
    const bool isKnown = count == 4 && name[0] == CTL_KERN && name[1] == KERN_PROC && name[2] == KERN_PROC_PID;
    if (!isKnown || fresh != nullptr || *oldSize < sizeof(kinfo_proc)) fatal("a sysctl that is not stood in for");
    using vantrel::virtualmac::VirtualProcess;
    const auto process = mac().processes().find(name[3]);
    *oldSize = 0;
    if (!process || process->state() == VirtualProcess::State::gone) return 0;
    auto* const facts = static_cast<kinfo_proc*>(old);
    *facts = {};
    facts->kp_proc.p_starttime.tv_sec = name[3];
    facts->kp_proc.p_stat = process->state() == VirtualProcess::State::zombie ? SZOMB : SRUN;
    *oldSize = sizeof(kinfo_proc);
    return 0;
}

}  // extern "C"
