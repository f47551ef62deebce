#include "platform/virtual/calls/CheckedApps.h"

#include <optional>
#include <utility>

namespace vantrel::virtualmac {

namespace {

using ApplicationPointer = std::shared_ptr<RunningApplication>;

class CheckedRunningApplication final : public RunningApplication {
  public:
    CheckedRunningApplication(Engine& engine, ApplicationPointer application)
        : engine_(engine), application_(std::move(application)) {}

    // These do not change.
    ProcessIdentifier processIdentifier() const override { return application_->processIdentifier(); }
    std::optional<std::string> bundleIdentifier() const override { return application_->bundleIdentifier(); }
    std::optional<std::string> localizedName() const override { return application_->localizedName(); }

    bool isTerminated() const override {
        engine_.platformCall();
        return application_->isTerminated();
    }

    bool activate(ActivationOptions options) override {
        engine_.platformCall();
        return application_->activate(options);
    }

    bool terminate() override {
        engine_.platformCall();
        return application_->terminate();
    }

    bool forceTerminate() override {
        engine_.platformCall();
        return application_->forceTerminate();
    }

  private:
    Engine& engine_;
    ApplicationPointer application_;
};

/// Null for null.
ApplicationPointer checked(Engine& engine, ApplicationPointer application) {
    if (!application) return nullptr;
    return std::make_shared<CheckedRunningApplication>(engine, std::move(application));
}

}  // namespace

void CheckedApplicationOpener::open(const std::vector<URL>& urls, const URL& application, bool activates,
                                    Completion completion) {
    engine_.platformCall();
    opener_.open(urls, application, activates,
                 [&engine = engine_, completion = std::move(completion)](Result result) mutable {
                     if (auto* opened = std::get_if<ApplicationPointer>(&result)) {
                         *opened = checked(engine, std::move(*opened));
                     }
                     completion(std::move(result));
                 });
}

std::shared_ptr<RunningApplication> CheckedFrontmostApplication::frontmostApplication() const {
    engine_.mainThreadCall("FrontmostApplication.frontmostApplication");
    return checked(engine_, frontmost_.frontmostApplication());
}

std::vector<std::shared_ptr<RunningApplication>> CheckedRunningApplications::withBundleIdentifier(
    std::string_view identifier) const {
    engine_.platformCall();
    auto applications = applications_.withBundleIdentifier(identifier);
    for (auto& application : applications) application = checked(engine_, std::move(application));
    return applications;
}

std::shared_ptr<RunningApplication> CheckedRunningApplications::withProcessIdentifier(ProcessIdentifier process) const {
    engine_.platformCall();
    return checked(engine_, applications_.withProcessIdentifier(process));
}

std::variant<ProcessIdentifier, PlatformError> CheckedProcessLauncher::launch(
    std::string_view executablePath, const std::vector<std::string>& arguments) {
    engine_.platformCall();
    return launcher_.launch(executablePath, arguments);
}

bool CheckedProcessLauncher::sendSignal(ProcessIdentifier process, int signal) {
    engine_.platformCall();
    return launcher_.sendSignal(process, signal);
}

bool CheckedWorkspace::open(const URL& url) {
    engine_.mainThreadCall("Workspace.open");
    return workspace_.open(url);
}

}  // namespace vantrel::virtualmac
