#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/apps/ProcessLauncher.h"

namespace vantrel {

/// NSApplicationActivationOptions, the values in use.
enum class ActivationOptions { none = 0, ignoringOtherApps = 2 };

/// One running application (NSRunningApplication). Any thread. Answers are fresh: a process that is gone is terminated,
/// even when the main run loop has not turned since.
class RunningApplication {
  public:
    virtual ~RunningApplication() = default;

    virtual ProcessIdentifier processIdentifier() const = 0;
    virtual std::optional<std::string> bundleIdentifier() const = 0;
    virtual std::optional<std::string> localizedName() const = 0;
    virtual bool isTerminated() const = 0;

    /// activateWithOptions:. A request that takes a moment and may be declined; false when it could not be sent.
    virtual bool activate(ActivationOptions options) = 0;
    /// terminate: asks politely; the application may ignore it.
    virtual bool terminate() = 0;
    /// forceTerminate.
    virtual bool forceTerminate() = 0;
};

/// Look-up of running applications. Any thread.
class RunningApplications {
  public:
    virtual ~RunningApplications() = default;

    /// runningApplicationsWithBundleIdentifier:, this process included. The one that was started first comes first.
    virtual std::vector<std::shared_ptr<RunningApplication>> withBundleIdentifier(
        std::string_view identifier) const = 0;

    /// runningApplicationWithProcessIdentifier:; null when there is none, a zombie included.
    virtual std::shared_ptr<RunningApplication> withProcessIdentifier(ProcessIdentifier process) const = 0;
};

}  // namespace vantrel
