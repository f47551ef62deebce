#pragma once

#import <AppKit/AppKit.h>

#include <cstdint>
#include <optional>

#include "platform/apps/ProcessLauncher.h"
#include "platform/apps/RunningApplications.h"

namespace vantrel::macos {

/// What the kernel says of processes, now. Any thread.
class KernelProcess {
  public:
    /// Microseconds since 1970 at which the process started; empty when there is none, or only a zombie. Tells a
    /// process from a later one with the same identifier.
    static std::optional<std::int64_t> startTime(ProcessIdentifier process);
};

/// An NSRunningApplication, which is documented as safe on any thread. Its own answers change only on a turn of the
/// main run loop, so the kernel is asked as well.
class MacRunningApplication final : public RunningApplication {
  public:
    /// Null for nil and for an application whose process is gone.
    static std::shared_ptr<MacRunningApplication> wrap(NSRunningApplication* application);

    MacRunningApplication(NSRunningApplication* application, ProcessIdentifier process, std::int64_t startTime)
        : application_(application), process_(process), startTime_(startTime) {}

    ProcessIdentifier processIdentifier() const override { return process_; }
    std::optional<std::string> bundleIdentifier() const override;
    std::optional<std::string> localizedName() const override;
    bool isTerminated() const override;
    bool activate(ActivationOptions options) override;
    bool terminate() override;
    bool forceTerminate() override;

    std::int64_t startTime() const { return startTime_; }

  private:
    NSRunningApplication* const application_;
    // The system forgets it when the application has ended.
    const ProcessIdentifier process_;
    const std::int64_t startTime_;
};

class MacRunningApplications final : public RunningApplications {
  public:
    std::vector<std::shared_ptr<RunningApplication>> withBundleIdentifier(std::string_view identifier) const override;
    std::shared_ptr<RunningApplication> withProcessIdentifier(ProcessIdentifier process) const override;
};

}  // namespace vantrel::macos
