#pragma once

#include <QTimer>
#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Rectangle.h"
#include "platform/threads/Block.h"
#include "platform/threads/Observation.h"

namespace vantrel::linuxdesktop {

class X11Watcher;

/// Keeps windows of the client that the window manager does not manage in front of other applications' windows. It
/// reacts to changes of the stacking order, so it costs nothing while nothing moves. Against an opponent who does the
/// same it reacts more and more slowly, down to about once a second. Main thread.
class FrontWindows {
  public:
    /// From back to front. The client's menus stay in front of all of them, its alerts in front of overlays.
    enum class Rank { overlay, topEdge, statusItem };

    FrontWindows(X11Connection& connection, X11Watcher& watcher);
    ~FrontWindows();

    /// Until the result is destroyed. The window must be a child of the root. While it is unmapped it is left alone.
    [[nodiscard]] std::unique_ptr<Observation> keep(xcb_window_t window, Rank rank);

    /// Whether an overlay is kept. It may cover anything, including a panel of the desktop.
    bool keepsAnOverlay() const;
    /// Called when the first overlay begins to be kept and when the last one ends, within the call that does so.
    [[nodiscard]] std::unique_ptr<Observation> observeOverlays(Block block);

    /// Puts the windows in front now, instead of a moment after the next change.
    void restack();

  private:
    struct Kept {
        xcb_window_t window;
        Rank rank;
    };
    class Keeping;
    struct Observer;
    class Removal;
    struct Layer;

    void begin(const std::shared_ptr<Kept>& kept);
    void end(const std::shared_ptr<Kept>& kept);
    void tell() const;
    void changed();
    std::optional<std::vector<Layer>> layers() const;
    bool restack(const Kept& kept, std::vector<Layer>& layers) const;
    const Kept* find(xcb_window_t window) const;
    bool isOurs(xcb_window_t window) const;
    bool holdsOurs(xcb_window_t window) const;
    bool staysInFrontOf(const Layer& layer, Rank rank) const;

    X11Connection& connection_;
    std::vector<std::shared_ptr<Kept>> kept_;
    std::vector<std::weak_ptr<Observer>> observers_;
    QTimer settle_;
    std::chrono::steady_clock::time_point lastRaise_;
    std::unique_ptr<Observation> stacking_;
};

}  // namespace vantrel::linuxdesktop
