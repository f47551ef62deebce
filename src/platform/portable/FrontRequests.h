#pragma once

#include <mutex>

#include "platform/apps/ProcessLauncher.h"

namespace vantrel {

/// What a system offers to bring one application to the front. Each way is a request that the system may decline, and
/// may accept without following it.
class WaysToFront {
  public:
    virtual ~WaysToFront() = default;

    virtual bool isInFront() const = 0;
    /// These return false if the system declines.
    virtual bool activate() = 0;
    /// In the place of the application that is in front now.
    virtual bool activateFromFrontmost() = 0;
    virtual bool makeFrontmost() = 0;
};

/// Brings applications to the front. The usual way comes first. The others follow only if the system declines, or if
/// the same application was asked for a moment before and is still not in front. Any thread.
class FrontRequests {
  public:
    /// Seconds. A request takes effect within the first; what happens after the second is another matter. The browser
    /// is asked for again after 1.5 s when it has lost the focus, and after 2.5 s when it resists full screen, each of
    /// which may come late by calls that are not answered.
    static constexpr double soon = 1;
    static constexpr double late = 5;

    /// `uptime` is in seconds. False if the system declines in every way.
    bool bring(ProcessIdentifier process, double uptime, WaysToFront& ways) {
        const bool insists = note(process, uptime, ways.isInFront());
        bool accepted = ways.activate();
        if (accepted && !insists) return true;
        accepted = ways.activateFromFrontmost() || accepted;
        if (accepted && !insists) return true;
        return ways.makeFrontmost() || accepted;
    }

  private:
    /// Whether an earlier request for it had no effect.
    bool note(ProcessIdentifier process, double uptime, bool isInFront) {
        const std::lock_guard guard(mutex_);
        const double since = uptime - askedAt_;
        const bool wasAsked = process == asked_ && since >= 0 && since < late;
        if (wasAsked && since < soon && !isInFront) return false;
        asked_ = isInFront ? 0 : process;
        askedAt_ = uptime;
        return wasAsked && !isInFront;
    }

    std::mutex mutex_;
    /// 0: none whose effect is open.
    ProcessIdentifier asked_ = 0;
    double askedAt_ = 0;
};

}  // namespace vantrel
