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

/// How long an alert may stay unseen.
constexpr double unseenFor = 1.0;

}  // namespace

VirtualAlerts::VirtualAlerts(Dependencies dependencies) : dependencies_(dependencies), engine_(dependencies.engine) {
    dependencies_.desktop.onSpaceChange.emplace_back([this] { tellWhoIsSeen(); });
}

std::size_t VirtualAlerts::runModal(const Alert& alert) {
    if (dependencies_.windows.front()) return run(alert, std::make_shared<AlertPanel>());
    return runWhereTheUserIs(alert);
}

std::size_t VirtualAlerts::runWhereTheUserIs(const Alert& alert) {
    const auto& [engine, desktop, activations, processes, windows, application] = dependencies_;
    const auto inFront = desktop.front();
    const ProcessIdentifier before =
        activations.isClientInFront() || inFront.empty() ? ProcessIdentifier{0} : inFront.front().process;
    const auto panel = std::make_shared<AlertPanel>();
    panel->asksNotToActivate = true;
    panel->collectionBehavior = AlertPanel::everywhere;
    if (application.isHidden()) application.unhide();
    const auto check = engine.mainLoop.addTimerInEveryMode(unseenFor, false, [this, panel] { letIn(panel); });
    const std::size_t answer = run(alert, panel);
    engine.mainLoop.invalidate(*check);
    engine.mainLoop.async(engine.scheduler.now(), [this, before] { giveTheFrontBack(before); });
    return answer;
}

void VirtualAlerts::letIn(const PanelPointer& panel) {
    if (isSeen(*panel)) return;
    orderFrontRegardless(panel);
    setCollectionBehavior(panel, AlertPanel::everywhere | AlertPanel::canJoinAllApplications);
}

void VirtualAlerts::giveTheFrontBack(ProcessIdentifier before) {
    if (!dependencies_.activations.isClientInFront() || dependencies_.windows.front()) return;
    if (const auto process = dependencies_.processes.find(before)) process->requestActivation(ActivationOptions::none);
}

std::size_t VirtualAlerts::run(const Alert& alert, const PanelPointer& panel) {
    const auto shown = std::make_shared<Shown>();
    shown->alert = alert;
    shown->panel = panel;
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
    tellWhoIsSeen();
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

void VirtualAlerts::orderFrontRegardless(const PanelPointer& panel) {
    const auto shown = shownWith(panel);
    {
        const std::lock_guard guard(mutex_);
        panel->isOrderedFront = true;
    }
    if (!shown) return;
    engine_.journal.emit({AlertEvent::orderedFront, shown->alert.messageText});
    tellWhoIsSeen();
}

void VirtualAlerts::setCollectionBehavior(const PanelPointer& panel, unsigned behavior) {
    const auto shown = shownWith(panel);
    unsigned before = 0;
    {
        const std::lock_guard guard(mutex_);
        before = std::exchange(panel->collectionBehavior, behavior);
    }
    if (!shown || before == behavior) return;
    if ((behavior & ~before & AlertPanel::canJoinAllApplications) != 0) {
        engine_.journal.emit({AlertEvent::joinsAll, shown->alert.messageText});
    }
    tellWhoIsSeen();
}

bool VirtualAlerts::isSeen(const AlertPanel& panel) const {
    {
        const std::lock_guard guard(mutex_);
        if (panel.isLetIn(letIn_)) return true;
    }
    return !dependencies_.desktop.mainDisplayShowsFullScreen();
}

void VirtualAlerts::tellWhoIsSeen() {
    std::vector<ShownPointer> all;
    {
        const std::lock_guard guard(mutex_);
        all = stack_;
    }
    for (const ShownPointer& shown : all) {
        const bool seen = isSeen(*shown->panel);
        {
            const std::lock_guard guard(mutex_);
            if (shown->answer || std::exchange(shown->isToldSeen, seen) == seen) continue;
        }
        engine_.journal.emit({seen ? AlertEvent::seen : AlertEvent::unseen, shown->alert.messageText});
    }
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

bool VirtualAlerts::isFrontSeen() const {
    const ShownPointer shown = front();
    return shown && isSeen(*shown->panel);
}

bool VirtualAlerts::isFrontActivating() const {
    const ShownPointer shown = front();
    return shown && (activating_ || !shown->panel->asksNotToActivate);
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

VirtualAlerts::ShownPointer VirtualAlerts::shownWith(const PanelPointer& panel) const {
    const std::lock_guard guard(mutex_);
    const auto found =
        std::find_if(stack_.begin(), stack_.end(), [&panel](const auto& shown) { return shown->panel == panel; });
    return found == stack_.end() ? nullptr : *found;
}

}  // namespace vantrel::virtualmac
