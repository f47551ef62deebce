#include "platform/virtual/apps/VirtualProcess.h"

namespace vantrel::virtualmac {

bool VirtualProcess::isTerminated() const {
    engine_.platformCall();
    return !isAlive();
}

bool VirtualProcess::activate(ActivationOptions options) {
    const Fields more{{Field::options, std::to_string(static_cast<int>(options))}};
    if (!ask(ApplicationEvent::activate, more)) return false;
    if (description_.declinesActivation) return true;
    engine_.world.after(description_.activationDelay, [self = shared_from_this()] { self->comeToFront(); });
    return true;
}

bool VirtualProcess::terminate() {
    if (!ask(ApplicationEvent::terminate)) return false;
    if (!description_.ignoresTerminate) exitAfter(description_.exitDelay);
    return true;
}

bool VirtualProcess::forceTerminate() {
    if (!ask(ApplicationEvent::forceTerminate)) return false;
    if (description_.refusesForceTerminate) return false;
    if (!description_.ignoresForceTerminate) exitAfter(description_.exitDelay);
    return true;
}

bool VirtualProcess::ask(ApplicationEvent kind, const Fields& more) {
    engine_.platformCall();
    if (!isAlive() || engine_.isOver()) return false;
    Fields fields{{Field::pid, std::to_string(origin_.identifier)}};
    fields.insert(fields.end(), more.begin(), more.end());
    engine_.journal.emit({kind, description_.name, std::move(fields)});
    return true;
}

void VirtualProcess::appear() {
    State expected = State::starting;
    if (!state_.compare_exchange_strong(expected, State::running) || !description_.isApplication) return;
    engine_.journal.emit(
        {ApplicationEvent::started, description_.name, {{Field::pid, std::to_string(origin_.identifier)}}});
}

bool VirtualProcess::exit() {
    const State end = description_.leavesZombie ? State::zombie : State::gone;
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
    if (signal == kill) exitAfter(description_.killDelay);
    if (signal == terminate && !description_.ignoresTerminate) exitAfter(description_.exitDelay);
    return true;
}

}  // namespace vantrel::virtualmac
