#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/ui/Alerts.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// Modal alerts. Alerts that open under others are stacked. When the process ends or the Mac is drained, the last
/// button is the answer.
class VirtualAlerts final : public Alerts {
  public:
    explicit VirtualAlerts(Engine& engine) : engine_(engine) {}

    std::size_t runModal(const Alert& alert) override;

    /// Driver-facing, any thread: the alerts shown, the front one last, with their buttons as shown.
    std::vector<Alert> up() const;

    /// The number of the front alert (Engine::nextInFront), or 0 if none is shown.
    std::uint64_t inFront() const;

    /// The participant presses a button of the front alert. Main thread, in an event. False if there is no such alert
    /// or button.
    bool answer(std::string_view button);
    /// Presses the last button.
    bool answerLast();

  private:
    struct Shown {
        Alert alert;
        std::uint64_t number = 0;
        std::optional<std::size_t> answer;
    };
    using ShownPointer = std::shared_ptr<Shown>;

    bool answer(const ShownPointer& shown, std::size_t index);
    ShownPointer front() const;

    Engine& engine_;
    mutable std::mutex mutex_;
    std::vector<ShownPointer> stack_;
};

}  // namespace vantrel::virtualmac
