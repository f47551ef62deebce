#include "platform/virtual/apps/VirtualProcess.h"

namespace vantrel::virtualmac {

bool VirtualProcess::isTerminated() const {
    return !isAlive();
}

bool VirtualProcess::activate(ActivationOptions options) {
    const Fields more{{Field::options, std::to_string(static_cast<int>(options))}};
    if (!ask(ApplicationEvent::activate, more)) return false;
    const auto behaviour = description();
    if (behaviour.declinesActivation) return true;
    engine_.world.after(behaviour.activationDelay, [self = shared_from_this()] { self->comeToFront(); });
    return true;
}

bool VirtualProcess::terminate() {
    if (!ask(ApplicationEvent::terminate)) return false;
    const auto behaviour = description();
    if (!behaviour.ignoresTerminate) exitAfter(behaviour.exitDelay);
    return true;
}

bool VirtualProcess::forceTerminate() {
    if (!ask(ApplicationEvent::forceTerminate)) return false;
    const auto behaviour = description();
    if (behaviour.refusesForceTerminate) return false;
    if (!behaviour.ignoresForceTerminate) exitAfter(behaviour.exitDelay);
    return true;
}

bool VirtualProcess::ask(ApplicationEvent kind, const Fields& more) {
    if (engine_.isOver()) return false;
    const bool canBeAsked = isAlive();
    Fields fields{{Field::pid, std::to_string(origin_.identifier)}};
    fields.insert(fields.end(), more.begin(), more.end());
    if (!canBeAsked) fields.emplace_back(Field::error, "no such process");
    engine_.journal.emit({kind, description_.name, std::move(fields)});
    return canBeAsked;
}

ApplicationDescription VirtualProcess::description() const {
    const std::lock_guard guard(mutex_);
    return description_;
}

void VirtualProcess::behaveLike(const ApplicationDescription& description) {
    const std::lock_guard guard(mutex_);
    description_.ignoresTerminate = description.ignoresTerminate;
    description_.ignoresForceTerminate = description.ignoresForceTerminate;
    description_.refusesForceTerminate = description.refusesForceTerminate;
    description_.exitDelay = description.exitDelay;
    description_.killDelay = description.killDelay;
    description_.activationDelay = description.activationDelay;
    description_.declinesActivation = description.declinesActivation;
}

void VirtualProcess::appear() {
    State expected = State::starting;
    if (!state_.compare_exchange_strong(expected, State::running) || !description_.isApplication) return;
    engine_.mainLoop.postOwn([self = shared_from_this()] { self->announce(); });
    engine_.journal.emit(
        {ApplicationEvent::started, description_.name, {{Field::pid, std::to_string(origin_.identifier)}}});
}

void VirtualProcess::appearSilently() {
    state_ = State::running;
    announce();
}

void VirtualProcess::leaveZombie() {
    const std::lock_guard guard(mutex_);
    description_.leavesZombie = true;
}

bool VirtualProcess::exit() {
    const State end = description().leavesZombie ? State::zombie : State::gone;
    State before = state_;
    do {
        if (before == State::zombie || before == State::gone) return false;
    } while (!state_.compare_exchange_weak(before, end));
    const bool wasListed = before == State::running && description_.isApplication;
    engine_.journal.emit({wasListed ? EventKind(ApplicationEvent::exited) : ProcessEvent::exited,
                          wasListed ? description_.name : origin_.path,
                          {{Field::pid, std::to_string(origin_.identifier)}}});
    desktop_.processEnded(origin_.identifier);
    return true;
}

void VirtualProcess::exitAfter(double seconds) {
    engine_.world.after(seconds, [self = shared_from_this()] { self->exit(); });
}

void VirtualProcess::comeToFront() {
    if (isListed()) desktop_.bringToFront(asCandidate());
}

bool VirtualProcess::receive(int signal) {
    constexpr int kill = 9;
    constexpr int terminate = 15;
    if (state_ == State::gone) return false;
    const auto behaviour = description();
    if (signal == kill) exitAfter(behaviour.killDelay);
    if (signal == terminate && !behaviour.ignoresTerminate) exitAfter(behaviour.exitDelay);
    return true;
}

}  // namespace vantrel::virtualmac
