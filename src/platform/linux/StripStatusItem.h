#pragma once

#include <QTimer>
#include <memory>

#include "platform/Observation.h"
#include "platform/linux/LinuxStatusItem.h"

namespace vantrel::linuxdesktop {

class LinuxScreens;
class StatusStrip;
class X11Connection;
class X11Watcher;

/// A status item where the desktop has no tray: a strip on the main display that stays in front.
class StripStatusItem final : public LinuxStatusItem {
  public:
    StripStatusItem(const MenuBuilder& builder, LinuxScreens& screens, X11Connection& connection, X11Watcher& watcher);
    ~StripStatusItem() override;

    void setButtonTitle(const std::string& title) override;
    void remove() override;

  private:
    void place();
    void openMenu();
    void raiseIfCovered();
    bool isCovered() const;

    LinuxScreens& screens_;
    X11Connection& connection_;
    std::unique_ptr<StatusStrip> strip_;
    QTimer settle_;
    std::unique_ptr<Observation> stacking_;
    std::unique_ptr<Observation> displays_;
};

}  // namespace vantrel::linuxdesktop
