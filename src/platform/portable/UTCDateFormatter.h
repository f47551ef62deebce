#pragma once

#include "platform/system/ISO8601DateFormatter.h"

namespace vantrel {

/// Internet date-times in UTC, computed without the C library's shared state. Any thread.
class UTCDateFormatter final : public ISO8601DateFormatter {
  public:
    /// Fractions are rounded towards the past. Times outside the years 0000 to 9999 become the nearest one inside; NaN
    /// becomes 1970-01-01T00:00:00Z.
    std::string string(double secondsSince1970) const override;
};

}  // namespace vantrel
