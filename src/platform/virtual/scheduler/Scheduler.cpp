#include "platform/virtual/scheduler/Scheduler.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "platform/threads/Lock.h"

namespace vantrel::virtualmac {

namespace {

/// A bijective mix of all bits.
std::uint64_t mixed(std::uint64_t value) {
    value ^= value >> 33;
    value *= 0xff51afd7ed558ccdULL;
    value ^= value >> 33;
    value *= 0xc4ceb9fe1a85ec53ULL;
    value ^= value >> 33;
    return value;
}

}  // namespace

Scheduler::Scheduler(Options options) : options_(std::move(options)) {
    driver_.scheduler = this;
}

Moment Scheduler::now() const {
    return locked([this] { return now_; });
}

std::thread Scheduler::start(Rank rank, Moment notBefore, std::function<void()> body) {
    auto record = std::make_shared<Record>();
    record->scheduler = this;
    record->rank = rank;
    record->due = [notBefore] { return Due::at(notBefore); };
    // Without a baton the thread counts as running until it reaches its own wait, so that the clock does not move.
    record->waiting = !options_.freeRunning;
    {
        const std::lock_guard guard(mutex_);
        const auto position =
            std::find_if(records_.begin(), records_.end(), [rank](const auto& other) { return other->rank > rank; });
        records_.insert(position, record);
    }
    return std::thread([this, record, body = std::move(body)]() mutable {
        enter(*record);
        body();
        body = nullptr;
        leave(*record);
    });
}

bool Scheduler::wait(DueFunction due, Wait kind) {
    return waitRecorded(std::move(due), kind, false);
}

bool Scheduler::waitUntilIdle(double limitSeconds) {
    const Moment limit = later(now(), limitSeconds);
    return !waitUnlessIdle([limit] { return Due::at(limit); });
}

bool Scheduler::waitUnlessIdle(DueFunction due) {
    if (callersRank() != Rank::driver) {
        misuse("only the driver waits for the others");
        return true;
    }
    return waitRecorded(std::move(due), Wait::idle, true);
}

bool Scheduler::waitRecorded(DueFunction due, Wait kind, bool untilIdle) {
    if (Lock::heldByThisThread() > 0) {
        misuse("a wait with a lock held");
        return false;
    }
    Record& self = callersRecord();
    bool released = false;
    {
        std::unique_lock lock(mutex_);
        self.due = std::move(due);
        self.kind = kind;
        self.untilIdle = untilIdle;
        self.waiting = true;
        if (options_.freeRunning) {
            waitFreely(lock, self);
        } else {
            pass(lock, self);
        }
        self.waiting = false;
        released = std::exchange(self.released, false);
    }
    if (released && kind == Wait::blocked && !forgiving_) misuse("deadlock: a wait that nothing can end");
    return !released;
}

void Scheduler::yield() {
    if (options_.freeRunning || Lock::heldByThisThread() > 0) return;
    if (options_.seed == 0 && !options_.choices) return;
    Record& self = callersRecord();
    if (&self == &driver_) return;
    if (options_.choices) return offerInterruption(self);
    std::unique_lock lock(mutex_);
    self.due = [] { return Due::at(0); };
    self.waiting = true;
    pass(lock, self);
    self.waiting = false;
}

void Scheduler::offerInterruption(Record& self) {
    std::unique_lock lock(mutex_);
    std::vector<Record*> others;
    for (const auto& record : records_) {
        if (isReady(*record)) others.push_back(record.get());
    }
    const auto chosen = others.empty() ? 0 : options_.choices->interrupt(others.size(), now_);
    if (chosen == 0) return;
    self.due = [] { return Due::at(0); };
    self.waiting = true;
    pass(lock, self, *others[chosen - 1]);
    self.waiting = false;
}

void Scheduler::halt() {
    leave(callersRecord());
    for (;;) pause();
}

std::size_t Scheduler::choose(std::size_t count) {
    if (count < 2) return 0;
    if (options_.choices) return options_.choices->choose(count, now_);
    if (options_.seed == 0) return 0;
    return mixed(options_.seed * 0x9e3779b97f4a7c15ULL + ++decisions_) % count;
}

Scheduler::Rank Scheduler::callersRank() const {
    return current_ != nullptr && current_->scheduler == this ? current_->rank : Rank::driver;
}

bool Scheduler::isAlone() const {
    return locked([this] { return records_.empty(); });
}

std::size_t Scheduler::count(Rank rank) const {
    return locked([this, rank] {
        return static_cast<std::size_t>(std::count_if(records_.begin(), records_.end(),
                                                      [rank](const auto& record) { return record->rank == rank; }));
    });
}

bool Scheduler::releaseStuck() {
    return change([this] {
        bool found = false;
        for (const auto& record : records_) {
            if (!record->waiting || record->kind != Wait::blocked || record->due().moment != never) continue;
            record->released = true;
            found = true;
        }
        return found;
    });
}

Scheduler::Record& Scheduler::callersRecord() {
    return current_ != nullptr && current_->scheduler == this ? *current_ : driver_;
}

bool Scheduler::isReady(const Record& record) const {
    return record.waiting && (record.released || record.due().moment <= now_);
}

bool Scheduler::isQuiet() const {
    return std::all_of(records_.begin(), records_.end(),
                       [this](const auto& record) { return record->waiting && !isReady(*record); });
}

bool Scheduler::mayRun(const Record& record) const {
    return isReady(record) && (&record != &driver_ || isQuiet());
}

void Scheduler::wakeReady() {
    if (!options_.freeRunning) return;
    for (const auto& record : records_) {
        if (isReady(*record)) record->wake.notify_one();
    }
    if (mayRun(driver_)) driver_.wake.notify_one();
}

/// No thread can run and the driver waits: moves the clock, or releases stuck threads.
void Scheduler::advance() {
    Due earliest;
    for (const auto& record : records_) {
        const Due due = record->due();
        earliest.add(due.oneShot);
        earliest.addRepeating(due.moment);
    }
    const bool driverGivesUp = driver_.untilIdle && earliest.oneShot == never;
    if (!driverGivesUp) earliest.add(driver_.due().moment);
    if (earliest.moment != never && !driverGivesUp) {
        now_ = earliest.moment;
        return;
    }
    const auto stuck = std::find_if(records_.begin(), records_.end(),
                                    [](const auto& record) { return record->kind == Wait::blocked; });
    const bool isDeadlock = earliest.moment == never && stuck != records_.end();
    (isDeadlock ? **stuck : driver_).released = true;
}

/// Without a baton: call this whenever a thread has stopped running.
void Scheduler::settle() {
    while (driver_.waiting && isQuiet() && !isReady(driver_)) advance();
    wakeReady();
}

Scheduler::Record& Scheduler::next() {
    for (;;) {
        std::vector<Record*> ready;
        for (const auto& record : records_) {
            if (!isReady(*record)) continue;
            if (record->due().first) return *record;
            ready.push_back(record.get());
        }
        if (!ready.empty()) return *ready[choose(ready.size())];
        if (isReady(driver_)) return driver_;
        advance();
    }
}

void Scheduler::pass(std::unique_lock<std::mutex>& lock, Record& self, Record& next) {
    baton_ = &next;
    if (baton_ == &self) return;
    baton_->wake.notify_one();
    self.wake.wait(lock, [this, &self] { return baton_ == &self; });
}

void Scheduler::waitFreely(std::unique_lock<std::mutex>& lock, Record& self) {
    settle();
    self.wake.wait(lock, [this, &self] { return mayRun(self); });
}

void Scheduler::enter(Record& record) {
    current_ = &record;
    if (options_.freeRunning) {
        waitRecorded(record.due, Wait::idle, false);
        return;
    }
    std::unique_lock lock(mutex_);
    record.wake.wait(lock, [this, &record] { return baton_ == &record; });
    record.waiting = false;
}

void Scheduler::leave(const Record& record) {
    const std::lock_guard guard(mutex_);
    std::erase_if(records_, [&record](const auto& other) { return other.get() == &record; });
    if (options_.freeRunning) {
        settle();
    } else {
        baton_ = &next();
        baton_->wake.notify_one();
    }
    current_ = nullptr;
}

void Scheduler::misuse(const std::string& what) const {
    if (options_.onMisuse) options_.onMisuse(what);
}

}  // namespace vantrel::virtualmac
