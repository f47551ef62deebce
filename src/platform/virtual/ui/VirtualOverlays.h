#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/ui/Overlay.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/world/AppWindow.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// The client's overlays. They are on every Space and above all windows of a lower layer, but not over another
/// application's full screen, unless they ask for that. On the same layer, other
/// applications' windows are above an overlay if they were opened after it was last ordered to the front.
class VirtualOverlays final : public Overlays {
  public:
    VirtualOverlays(Engine& engine, VirtualDesktop& desktop);

    [[nodiscard]] std::unique_ptr<Overlay> makeOverlay(const OverlayDescription& description) override;

    /// An overlay as the participant sees it.
    struct State {
        OverlayDescription description;
        bool visible = false;
        /// Whether it is seen where it is visible.
        bool isLetIn = true;
        /// Its number in the window list, above those of all other windows.
        std::int64_t number = 0;
        /// The newest window of another application when it was last ordered to the front.
        std::int64_t above = 0;

        /// Whether that window of another application is above it where they overlap.
        bool isUnder(const AppWindow& window) const {
            const int level = description.level;
            return window.layer > level || (window.layer == level && window.number > above);
        }
    };
    /// Driver-facing, any thread: those that are not closed, oldest first.
    std::vector<State> all() const;
    /// Driver-facing, any thread: something in the system moves them all to that level.
    void forceLevel(int level);
    /// Driver-facing, any thread: somebody closes the overlay with that frame. It is off the screen until the client
    /// orders it to the front again. False if none is shown there.
    bool closeShown(const Rect& frame);

  private:
    class Shown;

    /// Records for each visible overlay whether it is seen, where that has changed.
    void tellWhichAreSeen();

    Engine& engine_;
    const VirtualDesktop& desktop_;
    mutable std::mutex mutex_;
    std::vector<std::shared_ptr<State>> overlays_;
    std::int64_t made_ = 1'000'000;
};

}  // namespace vantrel::virtualmac
