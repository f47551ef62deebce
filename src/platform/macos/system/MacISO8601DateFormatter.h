#pragma once

#include "platform/system/ISO8601DateFormatter.h"

namespace vantrel::macos {

class MacISO8601DateFormatter final : public ISO8601DateFormatter {
  public:
    /// Fractions are rounded towards the past.
    std::string string(double secondsSince1970) const override;
};

}  // namespace vantrel::macos
