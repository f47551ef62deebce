#pragma once

#include "platform/ui/Alerts.h"

namespace vantrel::macos {

class MacAlerts final : public Alerts {
  public:
    /// An alert that the system ends without an answer counts as answered with its last button.
    std::size_t runModal(const Alert& alert) override;
};

}  // namespace vantrel::macos
