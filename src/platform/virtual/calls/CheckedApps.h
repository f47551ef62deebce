#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/apps/ApplicationOpener.h"
#include "platform/apps/FrontmostApplication.h"
#include "platform/apps/ProcessLauncher.h"
#include "platform/apps/RunningApplications.h"
#include "platform/apps/Workspace.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

class CheckedApplicationOpener final : public ApplicationOpener {
  public:
    CheckedApplicationOpener(Engine& engine, ApplicationOpener& opener) : engine_(engine), opener_(opener) {}

    void open(const std::vector<URL>& urls, const URL& application, bool activates, Completion completion) override;

  private:
    Engine& engine_;
    ApplicationOpener& opener_;
};

class CheckedFrontmostApplication final : public FrontmostApplication {
  public:
    CheckedFrontmostApplication(Engine& engine, const FrontmostApplication& frontmost)
        : engine_(engine), frontmost_(frontmost) {}

    std::shared_ptr<RunningApplication> frontmostApplication() const override;

  private:
    Engine& engine_;
    const FrontmostApplication& frontmost_;
};

class CheckedRunningApplications final : public RunningApplications {
  public:
    CheckedRunningApplications(Engine& engine, const RunningApplications& applications)
        : engine_(engine), applications_(applications) {}

    std::vector<std::shared_ptr<RunningApplication>> withBundleIdentifier(std::string_view identifier) const override;
    std::shared_ptr<RunningApplication> withProcessIdentifier(ProcessIdentifier process) const override;

  private:
    Engine& engine_;
    const RunningApplications& applications_;
};

class CheckedProcessLauncher final : public ProcessLauncher {
  public:
    CheckedProcessLauncher(Engine& engine, ProcessLauncher& launcher) : engine_(engine), launcher_(launcher) {}

    std::variant<ProcessIdentifier, PlatformError> launch(std::string_view executablePath,
                                                          const std::vector<std::string>& arguments) override;
    bool sendSignal(ProcessIdentifier process, int signal) override;

  private:
    Engine& engine_;
    ProcessLauncher& launcher_;
};

class CheckedWorkspace final : public Workspace {
  public:
    CheckedWorkspace(Engine& engine, Workspace& workspace) : engine_(engine), workspace_(workspace) {}

    bool open(const URL& url) override;

  private:
    Engine& engine_;
    Workspace& workspace_;
};

}  // namespace vantrel::virtualmac
