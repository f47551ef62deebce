#include "platform/virtual/ui/VirtualAlerts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vantrel::virtualmac {

namespace {

std::string name(AlertStyle style) {
    constexpr std::array names{"warning", "informational", "critical"};
    return names.at(static_cast<std::size_t>(style));
}

}  // namespace

std::size_t VirtualAlerts::runModal(const Alert& alert) {
    const auto shown = std::make_shared<Shown>();
    shown->alert = alert;
    shown->number = engine_.nextInFront();
    if (shown->alert.buttons.empty()) shown->alert.buttons = {"OK"};
    if (engine_.mainLoop.isOver()) return shown->alert.buttons.size() - 1;
    {
        const std::lock_guard guard(mutex_);
        stack_.push_back(shown);
    }
    Fields fields{{Field::style, name(alert.style)}, {Field::information, alert.informativeText}};
    for (const auto& button : shown->alert.buttons) fields.emplace_back(Field::button, button);
    engine_.journal.emit({AlertEvent::shown, alert.messageText, std::move(fields)});
    if (engine_.isMainThread()) {
        engine_.mainLoop.run(MainRunLoop::Mode::modal, [this, shown] {
            const std::lock_guard guard(mutex_);
            return shown->answer.has_value();
        });
    }
    const std::lock_guard guard(mutex_);
    std::erase(stack_, shown);
    return shown->answer.value_or(shown->alert.buttons.size() - 1);
}

std::vector<Alert> VirtualAlerts::up() const {
    const std::lock_guard guard(mutex_);
    std::vector<Alert> alerts;
    for (const auto& shown : stack_) {
        if (!shown->answer) alerts.push_back(shown->alert);
    }
    return alerts;
}

std::uint64_t VirtualAlerts::inFront() const {
    const ShownPointer shown = front();
    return shown ? shown->number : 0;
}

bool VirtualAlerts::answer(std::string_view button) {
    const ShownPointer shown = front();
    if (!shown) return false;
    const auto& buttons = shown->alert.buttons;
    const auto found = std::find(buttons.begin(), buttons.end(), button);
    return found != buttons.end() && answer(shown, static_cast<std::size_t>(found - buttons.begin()));
}

bool VirtualAlerts::answerLast() {
    const ShownPointer shown = front();
    return shown && answer(shown, shown->alert.buttons.size() - 1);
}

bool VirtualAlerts::answer(const ShownPointer& shown, std::size_t index) {
    {
        const std::lock_guard guard(mutex_);
        shown->answer = index;
    }
    engine_.journal.emit(
        {AlertEvent::answered, shown->alert.buttons[index], {{Field::message, shown->alert.messageText}}});
    return true;
}

VirtualAlerts::ShownPointer VirtualAlerts::front() const {
    const std::lock_guard guard(mutex_);
    if (stack_.empty() || stack_.back()->answer) return nullptr;
    return stack_.back();
}

}  // namespace vantrel::virtualmac
