#include "platform/virtual/desktop/VirtualAccessibility.h"

#include "platform/virtual/desktop/VirtualElement.h"

namespace vantrel::virtualmac {

std::shared_ptr<AccessibilityElement> VirtualAccessibility::application(ProcessIdentifier process) const {
    return std::make_shared<ApplicationElement>(*this, process);
}

AccessibilityError VirtualAccessibility::reach(ProcessIdentifier process) const {
    if (!trust_.isTrusted()) return accessibilityDisabled;
    const auto found = processes_.find(process);
    if (!found || !found->isListed()) return accessibilityCannotComplete;
    const auto given = engine_.scheduler.locked([this] { return messagingTimeout_; });
    const bool underTap = !given && keyboard_.taps() > 0;
    const auto uptime = [this] { return toSeconds(engine_.scheduler.now()); };
    if (underTap && unanswered_.refuses(process, uptime())) return accessibilityCannotComplete;
    const auto answers = [this, process] { return !unresponsive_.contains(process); };
    if (engine_.scheduler.locked(answers)) return accessibilitySuccess;
    const double longest = underTap ? accessibilityTimeoutUnderTap : given.value_or(0);
    const Moment end = later(engine_.scheduler.now(), longest > 0 ? longest : accessibilityTimeout);
    engine_.scheduler.wait([answers, end] { return Due::at(answers() ? 0 : end); }, Scheduler::Wait::blocked);
    if (engine_.scheduler.locked(answers) && found->isListed()) return accessibilitySuccess;
    unanswered_.note(process, uptime());
    return accessibilityCannotComplete;
}

void VirtualAccessibility::setMessagingTimeout(double seconds) {
    engine_.scheduler.change([this, seconds] { messagingTimeout_ = seconds; });
}

void VirtualAccessibility::setUnresponsive(ProcessIdentifier process, bool unresponsive) {
    engine_.scheduler.change([this, process, unresponsive] {
        if (unresponsive) {
            unresponsive_.insert(process);
        } else {
            unresponsive_.erase(process);
        }
    });
}

}  // namespace vantrel::virtualmac
