#pragma once

#include "platform/ui/StatusBar.h"

namespace vantrel::macos {

class MacStatusBar final : public StatusBar {
  public:
    [[nodiscard]] std::unique_ptr<StatusItem> statusItem(double length) override;
    /// The item is one of this status bar; a second removal does nothing.
    void removeStatusItem(StatusItem& item) override;
};

}  // namespace vantrel::macos
