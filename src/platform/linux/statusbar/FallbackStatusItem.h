#pragma once

#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/statusbar/RemovableStatusItem.h"
#include "platform/ui/Menu.h"

namespace vantrel::linuxdesktop {

/// A status item in the tray while there is a tray. When the tray ends, another item with the same title and menu takes
/// over for good: the way out of a session must not depend on a panel that may crash. Main thread.
class FallbackStatusItem final : public RemovableStatusItem {
  public:
    using Make = std::function<std::unique_ptr<RemovableStatusItem>()>;

    /// `trayAvailable` is asked every second until it returns false.
    FallbackStatusItem(std::unique_ptr<RemovableStatusItem> inTray, std::function<bool()> trayAvailable,
                       Make makeFallback);

    void setButtonTitle(const std::string& title) override;
    void setMenu(const Menu& menu) override;
    void remove() override;

  private:
    void look();

    std::unique_ptr<RemovableStatusItem> item_;
    const std::function<bool()> trayAvailable_;
    const Make makeFallback_;
    std::optional<std::string> title_;
    std::optional<Menu> menu_;
    QTimer looking_;
};

}  // namespace vantrel::linuxdesktop
