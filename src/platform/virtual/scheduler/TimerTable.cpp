#include "platform/virtual/scheduler/TimerTable.h"

namespace vantrel::virtualmac {

void TimerTable::add(const State& state) {
    state->age = ++added_;
    timers_.emplace(std::pair(state->due, state->age), state);
}

std::shared_ptr<const Block> TimerTable::remove(TimerState& state) {
    timers_.erase({state.due, state.age});
    return std::move(state.block);
}

void TimerTable::addTo(Due& due) const {
    for (const auto& [key, state] : timers_) {
        if (state->repeats) {
            due.addRepeating(key.first);
        } else {
            due.add(key.first);
        }
    }
}

std::shared_ptr<const Block> TimerTable::fire(Moment now) {
    if (timers_.empty() || head() > now) return nullptr;
    const State state = timers_.begin()->second;
    timers_.erase(timers_.begin());
    if (!state->repeats) return std::move(state->block);
    state->due += ((now - state->due) / state->interval + 1) * state->interval;
    timers_.emplace(std::pair(state->due, state->age), state);
    return state->block;
}

std::shared_ptr<const Block> TimerTable::removeFirst() {
    if (timers_.empty()) return nullptr;
    const State state = timers_.begin()->second;
    timers_.erase(timers_.begin());
    return std::move(state->block);
}

}  // namespace vantrel::virtualmac
