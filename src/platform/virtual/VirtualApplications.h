#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/RunningApplications.h"
#include "platform/virtual/Engine.h"

namespace vantrel::virtualmac {

/// Another application, or this one.
struct ApplicationDescription {
    std::string name;
    std::optional<std::string> bundleIdentifier;
    /// A polite request to end is ignored.
    bool ignoresTerminate = false;
    /// Seconds until a request to end has been carried out.
    double exitDelay = 0;
};

/// The running applications. This process is one of them.
class VirtualApplications final : public RunningApplications {
  public:
    VirtualApplications(Engine& engine, std::optional<std::string> ownIdentifier);
    ~VirtualApplications() override;

    std::vector<std::shared_ptr<RunningApplication>> withBundleIdentifier(std::string_view identifier) const override;
    std::shared_ptr<RunningApplication> withProcessIdentifier(ProcessIdentifier process) const override;

    /// Driver-facing, any thread: another application starts; its process.
    ProcessIdentifier add(ApplicationDescription description);
    /// It ends by itself. False when there is none.
    bool exit(ProcessIdentifier process);
    ProcessIdentifier ownProcess() const;

  private:
    class Process;

    Engine& engine_;
    mutable std::mutex mutex_;
    std::vector<std::shared_ptr<Process>> processes_;
    ProcessIdentifier next_ = 500;
};

}  // namespace vantrel::virtualmac
