#pragma once

#import <AppKit/AppKit.h>

#include "platform/ui/Alerts.h"

namespace vantrel::macos {

class MacAlerts final : public Alerts {
  public:
    /// If the system ends an alert without an answer, the last button counts as chosen.
    std::size_t runModal(const Alert& alert) override;

  private:
    NSModalResponse runWhereTheUserIs(NSAlert* alert, std::size_t lastButton);

    // The last application in front, before an alert, that was not the client.
    NSRunningApplication* before_ = nil;
};

}  // namespace vantrel::macos
