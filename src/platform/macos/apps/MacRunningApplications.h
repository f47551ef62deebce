#pragma once

#import <AppKit/AppKit.h>

#include <cstdint>
#include <optional>

#include "platform/apps/ProcessLauncher.h"
#include "platform/apps/RunningApplications.h"

namespace vantrel::macos {

/// The kernel's current knowledge of processes. Any thread.
class KernelProcess {
  public:
    /// When the process started, in microseconds since 1970. Empty if there is no such process or only a zombie.
    /// Distinguishes a process from a later one with the same identifier.
    static std::optional<std::int64_t> startTime(ProcessIdentifier process);
};

/// An NSRunningApplication, which is documented as thread-safe. Its answers change only when the main run loop turns,
/// so the kernel is asked too.
class MacRunningApplication final : public RunningApplication {
  public:
    /// Null for nil and for an application whose process is gone.
    static std::shared_ptr<MacRunningApplication> wrap(NSRunningApplication* application);
    /// The same, but an application whose process is gone counts as terminated.
    static std::shared_ptr<MacRunningApplication> wrapEvenEnded(NSRunningApplication* application);

    /// Without a start time the process is gone.
    MacRunningApplication(NSRunningApplication* application, ProcessIdentifier process,
                          std::optional<std::int64_t> startTime)
        : application_(application), process_(process), startTime_(startTime) {}

    ProcessIdentifier processIdentifier() const override { return process_; }
    std::optional<std::string> bundleIdentifier() const override;
    std::optional<std::string> localizedName() const override;
    bool isTerminated() const override;
    bool activate(ActivationOptions options) override;
    bool terminate() override;
    bool forceTerminate() override;

    std::optional<std::int64_t> startTime() const { return startTime_; }

  private:
    NSRunningApplication* const application_;
    // Kept because the system forgets it when the application ends.
    const ProcessIdentifier process_;
    const std::optional<std::int64_t> startTime_;
};

class MacRunningApplications final : public RunningApplications {
  public:
    std::vector<std::shared_ptr<RunningApplication>> withBundleIdentifier(std::string_view identifier) const override;
    std::shared_ptr<RunningApplication> withProcessIdentifier(ProcessIdentifier process) const override;
};

}  // namespace vantrel::macos
