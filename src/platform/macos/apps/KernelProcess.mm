#include "platform/macos/apps/KernelProcess.h"

#include <sys/sysctl.h>
#include <sys/types.h>

#include <array>
#include <cstddef>

namespace vantrel::macos {

std::optional<std::int64_t> KernelProcess::startTime(ProcessIdentifier process) {
    constexpr std::int64_t microsecondsPerSecond = 1'000'000;
    if (process <= 0) return std::nullopt;
    std::array<int, 4> name{CTL_KERN, KERN_PROC, KERN_PROC_PID, process};
    kinfo_proc facts{};
    std::size_t size = sizeof facts;
    if (sysctl(name.data(), name.size(), &facts, &size, nullptr, 0) != 0) return std::nullopt;
    // For a process that does not exist the call succeeds and writes nothing.
    if (size < sizeof facts || facts.kp_proc.p_stat == SZOMB) return std::nullopt;
    const auto& started = facts.kp_proc.p_starttime;
    return started.tv_sec * microsecondsPerSecond + started.tv_usec;
}

}  // namespace vantrel::macos
