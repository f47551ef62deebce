#pragma once

#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/apps/RunningApplications.h"
#include "platform/virtual/apps/VirtualProcessLauncher.h"

namespace vantrel::virtualmac {

/// The running applications, oldest first, including this process.
class VirtualRunningApplications final : public RunningApplications {
  public:
    explicit VirtualRunningApplications(VirtualProcessLauncher& processes) : processes_(processes) {}

    std::vector<std::shared_ptr<RunningApplication>> withBundleIdentifier(std::string_view identifier) const override;
    std::shared_ptr<RunningApplication> withProcessIdentifier(ProcessIdentifier process) const override;

    /// Driver-facing, any thread: starts another application and returns its process.
    ProcessIdentifier add(const ApplicationDescription& description) { return processes_.add(description); }
    /// It ends by itself. False if it does not exist.
    bool exit(ProcessIdentifier process) { return processes_.exit(process); }
    /// It opens a window at once. Returns the window's number, or 0 if it does not run.
    std::int64_t openWindow(ProcessIdentifier process, const NewWindow& window) {
        return processes_.openWindow(process, window);
    }
    ProcessIdentifier ownProcess() const { return processes_.ownProcess(); }

  private:
    VirtualProcessLauncher& processes_;
};

}  // namespace vantrel::virtualmac
