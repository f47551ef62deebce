#pragma once

#include <algorithm>
#include <functional>

#include "platform/virtual/scheduler/Moment.h"

namespace vantrel::virtualmac {

/// When a waiting thread can go on.
struct Due {
    /// The earliest moment; a past one means now.
    Moment moment = never;
    /// The same without what comes again and again (repeating timers): the work that will run out.
    Moment oneShot = never;

    static Due at(Moment moment) { return {moment, moment}; }

    void add(Moment other) {
        moment = std::min(moment, other);
        oneShot = std::min(oneShot, other);
    }
    void addRepeating(Moment other) { moment = std::min(moment, other); }
};

/// Asked again and again while the thread waits, on any thread, with the scheduler's mutex held: it reads only what
/// that mutex guards and calls nothing of the scheduler.
using DueFunction = std::function<Due()>;

}  // namespace vantrel::virtualmac
