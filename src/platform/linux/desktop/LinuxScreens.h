#pragma once

#include <QTimer>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/desktop/Screens.h"
#include "platform/linux/x11/X11Monitors.h"
#include "platform/linux/x11/X11Watcher.h"
#include "platform/linux/x11/X11Windows.h"

namespace vantrel {
class DispatchQueue;
}

namespace vantrel::linuxdesktop {

/// The displays as the client counts them. A change of displays causes a burst of notifications. Observers are told
/// once, a quarter of a second after the last one, and only if the displays differ from before. Main thread.
class LinuxScreens final : public Screens {
  public:
    LinuxScreens(X11Connection& connection, X11Windows& windows, X11Watcher& watcher, DispatchQueue& mainQueue);
    ~LinuxScreens() override;

    std::vector<Screen> screens() const override;
    std::optional<Screen> mainScreen() const override;
    bool screensHaveSeparateSpaces() const override { return true; }
    [[nodiscard]] std::unique_ptr<Observation> observeScreenParametersDidChange(Block block) override;

    /// The main screen in pixels of the root window, for placing windows. A display of common size if there is none.
    X11Rectangle mainFrame() const;
    /// The same for the primary display.
    X11Rectangle primaryFrame() const;
    /// Whether another display touches the primary one's top edge, so that the pointer can cross it.
    bool isBorderedFromAbove() const;

    /// From points, counted from the bottom left of the primary display, to pixels of the root window.
    X11Rectangle toPixels(const Rect& frame) const;

  private:
    struct Observer;
    class Removal;

    std::optional<std::pair<X11Monitor, X11Monitor>> mainAndPrimary() const;
    void burstEnded();

    mutable X11Monitors monitors_;
    X11Windows& windows_;
    DispatchQueue& mainQueue_;
    std::vector<X11Monitor> lastTold_;
    std::vector<std::weak_ptr<Observer>> observers_;
    QTimer quiet_;
    std::unique_ptr<Observation> notices_;
};

}  // namespace vantrel::linuxdesktop
