#pragma once

#include <atomic>

#include "platform/threads/Clock.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// The scheduler's time as uptime, and a calendar that continues while the lid is closed.
class VirtualClock final : public Clock {
  public:
    VirtualClock(Engine& engine, double calendarStart) : engine_(engine), offset_(calendarStart) {}

    double uptime() const override;
    double secondsSince1970() const override;

    /// Driver-facing, any thread: the computer sleeps for that long. Uptime stops.
    void closeLid(double seconds);

  private:
    Engine& engine_;
    /// The calendar at uptime 0.
    std::atomic<double> offset_;
};

}  // namespace vantrel::virtualmac
