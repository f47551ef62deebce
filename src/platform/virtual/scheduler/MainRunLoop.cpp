#include "platform/virtual/scheduler/MainRunLoop.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace vantrel::virtualmac {

void MainRunLoop::start() {
    thread_ = scheduler_.start(Scheduler::Rank::main, 0, [this] { live(); });
}

void MainRunLoop::live() {
    run(Mode::standard, [] { return false; });
    const auto due = [this] {
        return Due::at(stopping_ || own_.size() + events_.size() + mainQueue_.size() > 0 ? 0 : never);
    };
    while (!scheduler_.locked([this] { return stopping_; })) {
        dropEverything();
        scheduler_.wait(due, Scheduler::Wait::idle);
    }
    dropEverything();
}

void MainRunLoop::stop() {
    scheduler_.change([this] { over_ = stopping_ = true; });
}

void MainRunLoop::join() {
    if (thread_.joinable()) thread_.join();
}

void MainRunLoop::endProcess() {
    scheduler_.change([this] { over_ = true; });
}

bool MainRunLoop::isOver() const {
    return scheduler_.locked([this] { return over_; });
}

void MainRunLoop::exitProcess() {
    scheduler_.change([this] { over_ = exited_ = true; });
    scheduler_.halt();
}

bool MainRunLoop::hasExited() const {
    return scheduler_.locked([this] { return exited_; });
}

void MainRunLoop::postEvent(Block block) {
    const Moment now = scheduler_.now();
    scheduler_.change([&] { events_.push(now, std::move(block)); });
}

void MainRunLoop::postOwn(Block block) {
    const Moment now = scheduler_.now();
    scheduler_.change([&] { own_.push(now, std::move(block)); });
}

void MainRunLoop::async(Moment moment, Block block) {
    scheduler_.change([&] { mainQueue_.push(moment, std::move(block)); });
}

TimerTable::State MainRunLoop::addTimer(double intervalSeconds, bool repeats, bool inEveryMode, Block block) {
    // NSTimer's shortest interval.
    constexpr Moment shortest = 100'000;
    auto state = std::make_shared<TimerState>();
    state->interval = std::max(fromSeconds(intervalSeconds), shortest);
    state->repeats = repeats;
    state->inEveryMode = inEveryMode;
    state->block = std::make_shared<const Block>(std::move(block));
    const Moment now = scheduler_.now();
    state->due = state->interval >= never - now ? never : now + state->interval;
    scheduler_.change([&] { tableOf(*state).add(state); });
    return state;
}

void MainRunLoop::invalidate(TimerState& state) {
    // Destroyed without the mutex held, because it may own anything.
    const auto block = scheduler_.change([&] { return tableOf(state).remove(state); });
}

void MainRunLoop::run(Mode mode, const std::function<bool()>& done) {
    while (!isOver() && !done()) {
        // Refused under a lock. Going on would loop for ever.
        if (!scheduler_.wait([this, mode] { return due(mode); }, Scheduler::Wait::idle)) return;
        if (auto work = take(mode)) work();
    }
}

std::size_t MainRunLoop::timers() const {
    return scheduler_.locked([this] { return timers_.size(); });
}

std::size_t MainRunLoop::pending() const {
    return scheduler_.locked([this] { return own_.size() + events_.size() + mainQueue_.size(); });
}

Due MainRunLoop::due(Mode mode) const {
    if (over_) return Due::at(0);
    if (own_.size() > 0) return {0, 0, true};
    Due due = Due::at(events_.head());
    if (!mainQueueIsBusy_) due.add(mainQueue_.head());
    if (mode == Mode::standard) timers_.addTo(due);
    const Moment inEveryMode = timersInEveryMode_.head();
    due.first = inEveryMode != never && inEveryMode <= due.moment;
    timersInEveryMode_.addTo(due);
    return due;
}

std::function<void()> MainRunLoop::take(Mode mode) {
    enum class Source { events, mainQueue, timers };
    const Moment now = scheduler_.now();
    return scheduler_.change([&]() -> std::function<void()> {
        if (over_) return nullptr;
        if (auto own = own_.take(now)) return std::move(*own);
        const std::array<std::pair<Source, Moment>, 3> heads{
            {{Source::events, events_.head()},
             {Source::mainQueue, mainQueueIsBusy_ ? never : mainQueue_.head()},
             {Source::timers, mode == Mode::standard ? timers_.head() : never}}};
        Moment first = never;
        for (const auto& head : heads) first = std::min(first, head.second);
        const Moment inEveryMode = timersInEveryMode_.head();
        if (std::min(first, inEveryMode) > now) return nullptr;
        if (inEveryMode <= first) return [block = timersInEveryMode_.fire(now)] { (*block)(); };
        std::vector<Source> equals;
        for (const auto& [source, moment] : heads) {
            if (moment == first) equals.push_back(source);
        }
        switch (equals[scheduler_.choose(equals.size())]) {
            case Source::events:
                return std::move(*events_.take(now));
            case Source::timers:
                return [block = timers_.fire(now)] { (*block)(); };
            case Source::mainQueue:
                break;
        }
        mainQueueIsBusy_ = true;
        return [this, block = std::move(*mainQueue_.take(now))]() mutable {
            block();
            block = nullptr;
            scheduler_.change([this] { mainQueueIsBusy_ = false; });
        };
    });
}

void MainRunLoop::dropEverything() {
    // A block's objects may submit more blocks when destroyed.
    for (;;) {
        if (auto own = scheduler_.locked([this] { return own_.take(never); })) continue;
        if (auto event = scheduler_.locked([this] { return events_.take(never); })) continue;
        if (auto block = scheduler_.locked([this] { return mainQueue_.take(never); })) continue;
        if (const auto timer = scheduler_.locked([this] { return timers_.removeFirst(); })) continue;
        if (const auto timer = scheduler_.locked([this] { return timersInEveryMode_.removeFirst(); })) continue;
        return;
    }
}

}  // namespace vantrel::virtualmac
