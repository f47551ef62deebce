#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/apps/ApplicationOpener.h"
#include "platform/virtual/apps/VirtualProcessLauncher.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// Opens addresses with the application at a file address. If it is not installed, fails with the system's text.
class VirtualApplicationOpener final : public ApplicationOpener {
  public:
    VirtualApplicationOpener(Engine& engine, VirtualProcessLauncher& processes)
        : engine_(engine), processes_(processes) {}

    void open(const std::vector<URL>& urls, const URL& application, bool activates, Completion completion) override;

    static constexpr double usualAnswerDelay = 0.5;

    /// Driver-facing, any thread: how many seconds after the request the answer comes. Initially the usual ones.
    void setAnswerDelay(double seconds);
    /// The address opens, but the answer names no application.
    void answerWithoutApplication(bool without);
    /// Opening fails with that error. Empty: it works again.
    void failWith(std::optional<std::string> text);

  private:
    struct Behaviour {
        double delay = usualAnswerDelay;
        bool withoutApplication = false;
        std::optional<std::string> failure;
    };

    /// The application that opens the addresses, or why none does.
    Result openWith(const URL& application, const std::vector<URL>& urls, bool activates);

    Engine& engine_;
    VirtualProcessLauncher& processes_;
    std::mutex mutex_;
    Behaviour behaviour_;
};

}  // namespace vantrel::virtualmac
