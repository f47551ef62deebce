#include "platform/virtual/apps/VirtualProcess.h"

namespace vantrel::virtualmac {

bool VirtualProcess::isTerminated() const {
    return !isAlive();
}

/// The client's, each by the system's own call.
class VirtualProcess::Ways final : public WaysToFront {
  public:
    Ways(VirtualProcess& process, ActivationOptions options) : process_(process), options_(options) {}

    bool isInFront() const override { return process_.isFrontmost(); }
    bool activate() override { return process_.requestActivation(options_); }

    bool activateFromFrontmost() override {
        const auto front = process_.desktop_.front();
        if (!process_.activations_.isCooperative() || front.empty()) return false;
        return process_.requestActivationFrom(front.front(), options_);
    }

    bool makeFrontmost() override {
        return process_.activations_.makeFrontmost(process_.processIdentifier()) == accessibilitySuccess;
    }

  private:
    VirtualProcess& process_;
    const ActivationOptions options_;
};

bool VirtualProcess::activate(ActivationOptions options) {
    if (isTerminated()) return requestActivation(options);
    Ways ways(*this, options);
    return activations_.requests.bring(origin_.identifier, toSeconds(engine_.scheduler.now()), ways);
}

bool VirtualProcess::requestActivation(ActivationOptions options) {
    const Fields more{{Field::options, std::to_string(static_cast<int>(options))}};
    return ask(ApplicationEvent::activate, more) && follow(activations_.decide(origin_.identifier));
}

bool VirtualProcess::requestActivationFrom(const FrontCandidate& other, ActivationOptions options) {
    const Fields more{{Field::options, std::to_string(static_cast<int>(options))}, {Field::application, other.name}};
    return ask(ApplicationEvent::activateFrom, more) && follow(activations_.decide(origin_.identifier, other.process));
}

bool VirtualProcess::follow(const Activations::Decision& decision) {
    const auto behaviour = description();
    if (decision.comesAfter && !behaviour.declinesActivation) {
        engine_.world.after(behaviour.activationDelay + *decision.comesAfter,
                            [self = shared_from_this()] { self->comeToFront(); });
    }
    return decision.accepted;
}

void VirtualProcess::becomeFrontmost() {
    follow({});
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
