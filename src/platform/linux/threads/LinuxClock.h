#pragma once

#include "platform/threads/Clock.h"

namespace vantrel::linuxdesktop {

/// The kernel's clocks. CLOCK_MONOTONIC stands still while the computer is suspended.
class LinuxClock final : public Clock {
  public:
    double uptime() const override;
    double secondsSince1970() const override;
};

}  // namespace vantrel::linuxdesktop
