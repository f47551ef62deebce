#include "platform/virtual/desktop/VirtualAccessibility.h"

#include "platform/virtual/desktop/VirtualElement.h"

namespace vantrel::virtualmac {

std::shared_ptr<AccessibilityElement> VirtualAccessibility::application(ProcessIdentifier process) const {
    return std::make_shared<ApplicationElement>(*this, process);
}

class VirtualAccessibility::TimeLimit final : public AccessibilityTimeLimit {
  public:
    explicit TimeLimit(VirtualAccessibility& owner) : owner_(owner) {
        owner_.setMessagingTimeout(limitedAccessibilityTimeout);
        owner_.pauses_ = true;
        owner_.insists_ = false;
    }
    ~TimeLimit() override {
        owner_.setMessagingTimeout(0);
        owner_.pauses_ = owner_.insists_ = false;
    }
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

    void insist() override {
        owner_.pauses_ = false;
        owner_.insists_ = true;
    }

  private:
    VirtualAccessibility& owner_;
};

std::unique_ptr<AccessibilityTimeLimit> VirtualAccessibility::limitTime() {
    return std::make_unique<TimeLimit>(*this);
}

AccessibilityError VirtualAccessibility::reach(ProcessIdentifier process) const {
    if (!trust_.isTrusted()) return accessibilityDisabled;
    const auto found = processes_.find(process);
    if (!found || !found->isListed()) return accessibilityCannotComplete;
    const auto answers = [this, process] { return !unresponsive_.contains(process); };
    if (engine_.scheduler.locked(answers)) return accessibilitySuccess;
    const Moment end = later(engine_.scheduler.now(), timeout_);
    engine_.scheduler.wait([answers, end] { return Due::at(answers() ? 0 : end); }, Scheduler::Wait::blocked);
    if (engine_.scheduler.locked(answers) && found->isListed()) return accessibilitySuccess;
    unanswered_.note(process, toSeconds(engine_.scheduler.now()));
    return accessibilityCannotComplete;
}

void VirtualAccessibility::setMessagingTimeout(double seconds) {
    timeout_ = seconds > 0 ? seconds : accessibilityTimeout;
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
