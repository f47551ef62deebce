#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "platform/ui/Application.h"

/// AppKit's delegate. It forwards to the client's. Main thread.
@interface VantrelApplicationDelegate : NSObject <NSApplicationDelegate>

- (void)setReceiver:(std::weak_ptr<vantrel::ApplicationDelegate>)receiver;

@end

namespace vantrel::macos {

/// The shared NSApplication, which this object creates. Main thread.
class MacApplication final : public Application {
  public:
    MacApplication();
    ~MacApplication() override;

    void setActivationPolicy(ActivationPolicy policy) override;
    void setDelegate(std::weak_ptr<ApplicationDelegate> delegate) override;
    void setMainMenu(const Menu& menu) override;
    void run() override;
    void activate() override;
    void terminate() override;

  private:
    NSApplication* const application_;
    // AppKit holds its delegate weakly.
    VantrelApplicationDelegate* const forwarder_;
};

}  // namespace vantrel::macos
