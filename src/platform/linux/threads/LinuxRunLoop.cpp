#include "platform/linux/threads/LinuxRunLoop.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/linux/threads/DelayedWork.h"
#include "platform/linux/threads/LinuxClock.h"
#include "platform/linux/threads/MainThread.h"
#include "platform/linux/threads/RunLoopModes.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr double never = std::numeric_limits<double>::infinity();
constexpr double shortestInterval = 0.0001;

double now() {
    return LinuxClock().uptime();
}

}  // namespace

struct LinuxRunLoop::ScheduledTimer {
    std::atomic<bool> valid = true;
    double due = never;
    double interval = 0;
    bool repeats = false;
    bool running = false;
    Block block;
};

class LinuxRunLoop::Handle final : public Timer {
  public:
    Handle(LinuxRunLoop& loop, std::shared_ptr<ScheduledTimer> timer) : loop_(loop), timer_(std::move(timer)) {}
    ~Handle() override { invalidate(); }

    void invalidate() override {
        if (!timer_->valid.exchange(false)) return;
        // The block may own objects of the main thread, so it is destroyed there.
        if (loop_.mainThread_.isCurrent()) {
            loop_.removeInvalid();
        } else {
            loop_.mainThread_.post([&loop = loop_] { loop.removeInvalid(); });
        }
    }

  private:
    LinuxRunLoop& loop_;
    const std::shared_ptr<ScheduledTimer> timer_;
};

LinuxRunLoop::LinuxRunLoop(MainThread& mainThread, DelayedWork& delayedWork, RunLoopModes& modes)
    : mainThread_(mainThread), delayedWork_(delayedWork), modes_(modes), armedFor_(never) {
    modes_.setOnDefault([this] { mainThread_.post([this] { fireDue(); }); });
}

LinuxRunLoop::~LinuxRunLoop() {
    modes_.setOnDefault(nullptr);
}

std::unique_ptr<Timer> LinuxRunLoop::scheduledTimer(double intervalSeconds, bool repeats, Block block) {
    MainThread::require("scheduledTimer");
    auto timer = std::make_shared<ScheduledTimer>();
    timer->interval = intervalSeconds > shortestInterval ? intervalSeconds : shortestInterval;
    timer->due = now() + timer->interval;
    timer->repeats = repeats;
    timer->block = std::move(block);
    timers_.push_back(timer);
    arm();
    return std::make_unique<Handle>(*this, std::move(timer));
}

std::size_t LinuxRunLoop::timerCount() const {
    return static_cast<std::size_t>(
        std::count_if(timers_.begin(), timers_.end(), [](const auto& timer) { return timer->valid.load(); }));
}

void LinuxRunLoop::fireDue() {
    if (!modes_.isDefault()) return;
    armedFor_ = never;
    const double moment = now();
    std::vector<std::shared_ptr<ScheduledTimer>> due;
    for (const auto& timer : timers_) {
        if (timer->due <= moment) due.push_back(timer);
    }
    std::stable_sort(due.begin(), due.end(), [](const auto& a, const auto& b) { return a->due < b->due; });
    for (const auto& timer : due) {
        if (timer->valid) fire(*timer);
    }
    removeInvalid();
    arm();
}

void LinuxRunLoop::fire(ScheduledTimer& timer) {
    const double due = timer.due;
    timer.due = never;
    timer.running = true;
    timer.block();
    timer.running = false;
    if (!timer.repeats) timer.valid = false;
    // However late it is, it fires once and then at the next moment of its grid.
    timer.due = due + timer.interval * (std::floor((now() - due) / timer.interval) + 1);
}

// The handle of an invalid timer may live on, but its block is destroyed here. If the block is on the stack, this is
// called again when it returns.
void LinuxRunLoop::removeInvalid() {
    std::vector<Block> dropped;
    std::erase_if(timers_, [&dropped](const auto& timer) {
        if (timer->valid || timer->running) return false;
        dropped.push_back(std::move(timer->block));
        return true;
    });
    // The blocks are destroyed here, after the list is complete again: what they own may invalidate other timers.
}

void LinuxRunLoop::arm() {
    double next = never;
    for (const auto& timer : timers_) {
        if (timer->valid) next = std::min(next, timer->due);
    }
    if (next >= armedFor_) return;
    armedFor_ = next;
    delayedWork_.after(next - now(), [this] { mainThread_.post([this] { fireDue(); }); });
}

}  // namespace vantrel::linuxdesktop
