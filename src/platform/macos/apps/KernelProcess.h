#pragma once

#include <cstdint>
#include <optional>

#include "platform/apps/ProcessLauncher.h"

namespace vantrel::macos {

/// What the kernel says of processes, now. Any thread.
class KernelProcess {
  public:
    /// Microseconds since 1970 at which the process started; empty when there is none, or only a zombie. Tells a
    /// process from a later one with the same identifier.
    static std::optional<std::int64_t> startTime(ProcessIdentifier process);
};

}  // namespace vantrel::macos
