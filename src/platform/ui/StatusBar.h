#pragma once

#include <memory>
#include <string>

#include "platform/ui/Menu.h"

namespace vantrel {

/// NSVariableStatusItemLength.
inline constexpr double variableStatusItemLength = -1;

/// An item of the system menu bar (NSStatusItem). Destroying it removes it from the bar. Main thread.
class StatusItem {
  public:
    virtual ~StatusItem() = default;

    virtual void setButtonTitle(const std::string& title) = 0;
    virtual void setMenu(const Menu& menu) = 0;
};

/// NSStatusBar systemStatusBar. Main thread.
class StatusBar {
  public:
    virtual ~StatusBar() = default;

    [[nodiscard]] virtual std::unique_ptr<StatusItem> statusItem(double length) = 0;

    /// removeStatusItem:. If its menu is open, the menu closes with nothing chosen.
    virtual void removeStatusItem(StatusItem& item) = 0;
};

}  // namespace vantrel
