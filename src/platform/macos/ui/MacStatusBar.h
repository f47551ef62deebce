#pragma once

#import <AppKit/AppKit.h>

#include "platform/ui/StatusBar.h"

namespace vantrel::macos {

/// An NSStatusItem. Calls do nothing once it is removed. Main thread.
class MacStatusItem final : public StatusItem {
  public:
    explicit MacStatusItem(double length);
    ~MacStatusItem() override;

    void setButtonTitle(const std::string& title) override;
    void setMenu(const Menu& menu) override;

    void remove();

  private:
    NSStatusItem* item_;
};

class MacStatusBar final : public StatusBar {
  public:
    [[nodiscard]] std::unique_ptr<StatusItem> statusItem(double length) override;
    /// The item must be one of this status bar. A second removal does nothing.
    void removeStatusItem(StatusItem& item) override;
};

}  // namespace vantrel::macos
