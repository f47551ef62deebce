#pragma once

#include <QTimer>
#include <memory>

#include "platform/linux/statusbar/LinuxStatusItem.h"
#include "platform/linux/statusbar/StatusBarDependencies.h"
#include "platform/threads/Observation.h"

namespace vantrel::linuxdesktop {

class StatusKey;
class StatusStrip;
class TopEdge;

/// A status item as a strip at the top of the primary display, in front of everything and on every desktop. While a
/// full-screen window is there, the strip hides, as a menu bar does. It appears when the pointer touches the display's
/// top edge, and stays while the pointer is near that edge or the menu is open. Control-F8 opens the menu. It is the
/// way out of a session, so nothing else may hide it. Main thread.
class StripStatusItem final : public LinuxStatusItem {
  public:
    /// `whileCovered` is for a desktop with a tray: shown while its panel may be covered, by a full-screen window as
    /// above or by an overlay on any display.
    enum class Presence { always, whileCovered };

    StripStatusItem(const StatusBarDependencies& dependencies, Presence presence);
    ~StripStatusItem() override;

    void setButtonTitle(const std::string& title) override;
    void remove() override;

  private:
    void place();
    void openMenu();
    void openMenuByKey();
    void update();
    void reveal();
    void look();
    bool pointerIsNear(int above, int below) const;
    bool isCovered() const;

    StatusBarDependencies dependencies_;
    const Presence presence_;
    std::unique_ptr<StatusStrip> strip_;
    std::unique_ptr<TopEdge> topEdge_;
    std::unique_ptr<StatusKey> key_;
    bool covered_ = false;
    bool revealed_ = false;
    bool menuOpen_ = false;
    bool removed_ = false;
    QTimer settle_;
    QTimer looking_;
    std::unique_ptr<Observation> kept_;
    std::unique_ptr<Observation> overlays_;
    std::unique_ptr<Observation> stacking_;
    std::unique_ptr<Observation> desktops_;
    std::unique_ptr<Observation> windows_;
    std::unique_ptr<Observation> displays_;
};

}  // namespace vantrel::linuxdesktop
