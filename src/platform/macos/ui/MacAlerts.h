#pragma once

#include "platform/ui/Alerts.h"

namespace vantrel::macos {

class MacAlerts final : public Alerts {
  public:
    /// If the system ends an alert without an answer, the last button counts as chosen.
    std::size_t runModal(const Alert& alert) override;
};

}  // namespace vantrel::macos
