#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>

#include "platform/threads/Block.h"
#include "platform/virtual/scheduler/Due.h"

namespace vantrel::virtualmac {

/// A timer's state, shared by its handle and the table. Guarded by the scheduler's mutex.
struct TimerState {
    Moment due = never;
    Moment interval = 0;
    bool repeats = false;
    /// Whether it fires in every mode of the run loop, not only in the standard one.
    bool inEveryMode = false;
    std::uint64_t age = 0;
    /// Null once the timer is invalid.
    std::shared_ptr<const Block> block;
};

/// The valid timers by their next moment, then by age. Guarded by the scheduler's mutex.
class TimerTable {
  public:
    using State = std::shared_ptr<TimerState>;

    void add(const State& state);

    /// Returns the block, which the caller must destroy without the mutex held. Null if the timer was already invalid.
    std::shared_ptr<const Block> remove(TimerState& state);

    /// The first timer's moment, or `never` if there is none.
    Moment head() const { return timers_.empty() ? never : timers_.begin()->first.first; }
    void addTo(Due& due) const;

    /// The block of the first timer that is due. A repeating timer moves to the first moment of its grid after `now`;
    /// any other becomes invalid. Null if none is due.
    std::shared_ptr<const Block> fire(Moment now);

    /// Invalidates the first timer, due or not. Returns its block, or null if there is none.
    std::shared_ptr<const Block> removeFirst();

    std::size_t size() const { return timers_.size(); }

  private:
    std::map<std::pair<Moment, std::uint64_t>, State> timers_;
    std::uint64_t added_ = 0;
};

}  // namespace vantrel::virtualmac
