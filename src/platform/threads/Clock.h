#pragma once

namespace vantrel {

/// The computer's two clocks, in seconds. Any thread.
class Clock {
  public:
    virtual ~Clock() = default;

    /// Time since some fixed moment. Stops while the computer sleeps (mach_absolute_time). Never goes back.
    virtual double uptime() const = 0;

    /// The calendar: seconds since 1970-01-01T00:00:00Z. Continues while the computer sleeps, and may be set.
    virtual double secondsSince1970() const = 0;
};

}  // namespace vantrel
