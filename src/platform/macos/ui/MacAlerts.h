#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "platform/ui/Alerts.h"

namespace vantrel::macos {

class MacAlerts final : public Alerts {
  public:
    /// If the system ends an alert without an answer, the last button counts as chosen.
    std::size_t runModal(const Alert& alert) override;

  private:
    NSModalResponse runWhereTheUserIs(NSAlert* alert, std::size_t lastButton);
    /// Where the one that was there has ended.
    void rememberWhoIsInFront();

    struct InFront {
        NSRunningApplication* application = nil;
        // Who came there last after its end.
        NSRunningApplication* successor = nil;
    };

    static void giveTheFrontBack(const std::shared_ptr<InFront>& before, int times);

    // Who was in front before an alert, until the front has been given back.
    const std::shared_ptr<InFront> before_ = std::make_shared<InFront>();
};

}  // namespace vantrel::macos
