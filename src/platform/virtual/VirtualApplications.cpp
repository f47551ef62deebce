#include "platform/virtual/VirtualApplications.h"

#include <atomic>
#include <utility>

namespace vantrel::virtualmac {

class VirtualApplications::Process final : public RunningApplication,
                                           public std::enable_shared_from_this<VirtualApplications::Process> {
  public:
    Process(Engine& engine, ProcessIdentifier identifier, ApplicationDescription description)
        : engine_(engine), identifier_(identifier), description_(std::move(description)) {}

    ProcessIdentifier processIdentifier() const override { return identifier_; }
    std::optional<std::string> bundleIdentifier() const override { return description_.bundleIdentifier; }
    std::optional<std::string> localizedName() const override { return description_.name; }

    bool isTerminated() const override {
        engine_.platformCall();
        return terminated_;
    }

    bool activate(ActivationOptions) override { return ask("application-activate"); }

    bool terminate() override {
        if (!ask("application-terminate")) return false;
        if (!description_.ignoresTerminate) exitSoon();
        return true;
    }

    bool forceTerminate() override {
        if (!ask("application-force-terminate")) return false;
        exitSoon();
        return true;
    }

    bool exit() {
        if (terminated_.exchange(true)) return false;
        emit("application-exited");
        return true;
    }

    void emit(const std::string& kind) {
        engine_.journal.emit(kind, description_.name, {{"pid", std::to_string(identifier_)}});
    }

    bool isGone() const { return terminated_; }

  private:
    bool ask(const std::string& kind) {
        engine_.platformCall();
        if (terminated_ || engine_.isOver()) return false;
        emit(kind);
        return true;
    }

    void exitSoon() {
        engine_.world.after(description_.exitDelay, [self = shared_from_this()] { self->exit(); });
    }

    Engine& engine_;
    const ProcessIdentifier identifier_;
    const ApplicationDescription description_;
    std::atomic<bool> terminated_ = false;
};

VirtualApplications::VirtualApplications(Engine& engine, std::optional<std::string> ownIdentifier) : engine_(engine) {
    ApplicationDescription own;
    own.name = "Vantrel";
    own.bundleIdentifier = std::move(ownIdentifier);
    processes_.push_back(std::make_shared<Process>(engine_, next_++, std::move(own)));
}

VirtualApplications::~VirtualApplications() = default;

std::vector<std::shared_ptr<RunningApplication>> VirtualApplications::withBundleIdentifier(
    std::string_view identifier) const {
    engine_.platformCall();
    const std::lock_guard guard(mutex_);
    std::vector<std::shared_ptr<RunningApplication>> found;
    for (const auto& process : processes_) {
        if (!process->isGone() && process->bundleIdentifier() == identifier) found.push_back(process);
    }
    return found;
}

std::shared_ptr<RunningApplication> VirtualApplications::withProcessIdentifier(ProcessIdentifier process) const {
    engine_.platformCall();
    const std::lock_guard guard(mutex_);
    for (const auto& candidate : processes_) {
        if (!candidate->isGone() && candidate->processIdentifier() == process) return candidate;
    }
    return nullptr;
}

ProcessIdentifier VirtualApplications::add(ApplicationDescription description) {
    std::shared_ptr<Process> process;
    {
        const std::lock_guard guard(mutex_);
        process = std::make_shared<Process>(engine_, next_++, std::move(description));
        processes_.push_back(process);
    }
    process->emit("application-started");
    return process->processIdentifier();
}

bool VirtualApplications::exit(ProcessIdentifier process) {
    std::shared_ptr<Process> found;
    {
        const std::lock_guard guard(mutex_);
        for (const auto& candidate : processes_) {
            if (candidate->processIdentifier() == process) found = candidate;
        }
    }
    return found && found->exit();
}

ProcessIdentifier VirtualApplications::ownProcess() const {
    const std::lock_guard guard(mutex_);
    return processes_.front()->processIdentifier();
}

}  // namespace vantrel::virtualmac
