#pragma once

#include <algorithm>
#include <functional>

#include "platform/virtual/scheduler/Moment.h"

namespace vantrel::virtualmac {

/// When a waiting thread can continue.
struct Due {
    /// The earliest moment. A past one means now.
    Moment moment = never;
    /// The same without repeating timers: the work that will run out.
    Moment oneShot = never;
    /// Before every other thread that is due, and the seed has no say in it.
    bool first = false;

    static Due at(Moment moment) { return {moment, moment, false}; }

    void add(Moment other) {
        moment = std::min(moment, other);
        oneShot = std::min(oneShot, other);
    }
    void addRepeating(Moment other) { moment = std::min(moment, other); }
};

/// Called repeatedly while the thread waits, on any thread, with the scheduler's mutex held. So it may read only what
/// that mutex guards, and must not call the scheduler.
using DueFunction = std::function<Due()>;

}  // namespace vantrel::virtualmac
