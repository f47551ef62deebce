#pragma once

#include "platform/threads/Clock.h"

namespace vantrel::macos {

class MacClock final : public Clock {
  public:
    double uptime() const override;
    double secondsSince1970() const override;
};

}  // namespace vantrel::macos
