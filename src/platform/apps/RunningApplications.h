#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/apps/ProcessLauncher.h"

namespace vantrel {

/// The NSApplicationActivationOptions in use.
enum class ActivationOptions { none = 0, ignoringOtherApps = 2 };

/// One running application (NSRunningApplication). Any thread. Answers are current: a process that is gone counts as
/// terminated even if the main run loop has not turned since. Texts are UTF-8, with U+FFFD for each byte of the
/// system's that is not.
class RunningApplication {
  public:
    virtual ~RunningApplication() = default;

    virtual ProcessIdentifier processIdentifier() const = 0;
    virtual std::optional<std::string> bundleIdentifier() const = 0;
    virtual std::optional<std::string> localizedName() const = 0;
    virtual bool isTerminated() const = 0;

    /// activateWithOptions:. A request that takes a moment and may be declined. False if it could not be sent.
    virtual bool activate(ActivationOptions options) = 0;
    /// terminate: a polite request, which the application may ignore.
    virtual bool terminate() = 0;
    /// forceTerminate.
    virtual bool forceTerminate() = 0;
};

/// Finds running applications. Any thread. A new one may be missing until the main run loop has turned; one that has
/// ended is missing at once.
class RunningApplications {
  public:
    virtual ~RunningApplications() = default;

    /// runningApplicationsWithBundleIdentifier:, including this process. Oldest first.
    virtual std::vector<std::shared_ptr<RunningApplication>> withBundleIdentifier(
        std::string_view identifier) const = 0;

    /// runningApplicationWithProcessIdentifier:. Null if there is none or it is a zombie.
    virtual std::shared_ptr<RunningApplication> withProcessIdentifier(ProcessIdentifier process) const = 0;
};

}  // namespace vantrel
