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

constexpr double betweenLooks = 1.0;
constexpr int mostUnseenLooks = 10;
constexpr double betweenGivings = FrontRequests::soon;
constexpr int mostGivings = 2;

}  // namespace

VirtualAlerts::VirtualAlerts(Dependencies dependencies) : dependencies_(dependencies), engine_(dependencies.engine) {
    dependencies_.desktop.onSpaceChange.emplace_back([this] { tellWhoIsSeen(); });
    dependencies_.desktop.onFrontChange.emplace_back([this] { tellWhoIsSeen(); });
}

std::size_t VirtualAlerts::runModal(const Alert& alert) {
    if (dependencies_.windows.front()) return run(alert, std::make_shared<AlertPanel>());
    return runWhereTheUserIs(alert);
}

std::size_t VirtualAlerts::runWhereTheUserIs(const Alert& alert) {
    const auto& [engine, desktop, activations, processes, windows, application] = dependencies_;
    if (!activations.isClientInFront()) before_ = {.process = whoIsInFront()};
    const auto panel = std::make_shared<AlertPanel>();
    panel->asksNotToActivate = true;
    panel->collectionBehavior = AlertPanel::everywhere;
    if (application.isHidden()) application.unhide();
    int unseen = 0;
    const auto looks =
        engine.mainLoop.addTimerInEveryMode(betweenLooks, true, [this, panel, &unseen] { look(panel, unseen); });
    const std::size_t answer = run(alert, panel);
    engine.mainLoop.invalidate(*looks);
    engine.mainLoop.async(engine.scheduler.now(), [this] { giveTheFrontBack(mostGivings); });
    return answer;
}

ProcessIdentifier VirtualAlerts::whoIsInFront() const {
    const auto inFront = dependencies_.desktop.front();
    return inFront.empty() ? ProcessIdentifier{0} : inFront.front().process;
}

bool VirtualAlerts::isAlive(ProcessIdentifier process) const {
    const auto found = dependencies_.processes.find(process);
    return found && found->isAlive();
}

void VirtualAlerts::rememberWhoIsInFront() {
    if (dependencies_.activations.isClientInFront() || isAlive(before_.process)) return;
    before_.successor = whoIsInFront();
}

void VirtualAlerts::look(const PanelPointer& panel, int& unseen) {
    rememberWhoIsInFront();
    // The one above is looked after first.
    if (!isInFront(panel)) return;
    if (isSeen(*panel)) {
        unseen = 0;
        return;
    }
    ++unseen;
    setCollectionBehavior(panel, AlertPanel::everywhere | AlertPanel::canJoinAllApplications);
    orderFrontRegardless(panel);
    if (unseen == 1 || isSeen(*panel)) return;
    if (!dependencies_.activations.isClientInFront()) dependencies_.application.activate();
    if (unseen < mostUnseenLooks || isSeen(*panel)) return;
    if (const auto shown = shownWith(panel)) stop(panel, shown->alert.buttons.size() - 1);
}

bool VirtualAlerts::hasTakenTheFront() const {
    return dependencies_.activations.isClientInFront() && !dependencies_.windows.front() && !front();
}

void VirtualAlerts::giveTheFrontBack(int times) {
    // A later alert over the client itself takes nobody's place.
    if (!dependencies_.activations.isClientInFront() || dependencies_.windows.front()) before_ = {};
    if (times == 0 || !hasTakenTheFront()) return;
    const auto process = dependencies_.processes.find(isAlive(before_.process) ? before_.process : before_.successor);
    if (!process || !process->isAlive()) return;
    if (const auto identifier = process->bundleIdentifier(); identifier && dependencies_.activations.isCooperative()) {
        dependencies_.activations.yieldTo(*identifier);
    }
    process->activate(ActivationOptions::none);
    engine_.mainLoop.async(later(engine_.scheduler.now(), betweenGivings),
                           [this, times] { giveTheFrontBack(times - 1); });
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

void VirtualAlerts::stop(const PanelPointer& panel, std::size_t button) {
    const auto shown = shownWith(panel);
    if (!shown) return;
    {
        const std::lock_guard guard(mutex_);
        if (shown->answer) return;
        shown->answer = button;
    }
    engine_.journal.emit(
        {AlertEvent::stopped, shown->alert.buttons[button], {{Field::message, shown->alert.messageText}}});
}

bool VirtualAlerts::isSeen(const AlertPanel& panel) const {
    const bool isClientInFront = dependencies_.activations.isClientInFront();
    {
        const std::lock_guard guard(mutex_);
        if (panel.isLetIn(letIn_, isClientInFront)) return true;
    }
    return !dependencies_.desktop.mainDisplayShowsFullScreen();
}

bool VirtualAlerts::isInFront(const PanelPointer& panel) const {
    const ShownPointer shown = front();
    return shown && shown->panel == panel;
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
