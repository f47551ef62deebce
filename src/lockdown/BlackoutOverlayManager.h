#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "lockdown/BlackoutWindow.h"
#include "platform/desktop/Screens.h"
#include "platform/system/Log.h"
#include "platform/threads/Observation.h"
#include "platform/threads/RunLoop.h"
#include "platform/ui/Overlay.h"

namespace vantrel {

/// Covers every display but one during a lockdown. Main thread; always shared.
class BlackoutOverlayManager : public std::enable_shared_from_this<BlackoutOverlayManager> {
  public:
    /// Seconds between two times that the covers are put on top again.
    static constexpr double enforceInterval = 3.0;

    BlackoutOverlayManager(Screens& screens, Overlays& overlays, RunLoop& mainRunLoop, Log& log)
        : screens_(screens), overlays_(overlays), mainRunLoop_(mainRunLoop), log_(log) {}

    /// Covers every screen but `excludedScreen`. Covers nothing if all displays share one Space: a full-screen
    /// application then blanks the others.
    void activate(const std::optional<Screen>& excludedScreen);
    void deactivate();

    bool isActive() const { return isActive_; }
    /// The number of covers shown.
    std::size_t windowCount() const { return windows_.size(); }

  private:
    void createOverlays(const std::optional<Screen>& excludedScreen);
    void closeOverlays();
    void enforce();
    void handleScreenChange();
    void print(std::string_view line) { log_.print(line); }

    Screens& screens_;
    Overlays& overlays_;
    RunLoop& mainRunLoop_;
    Log& log_;

    std::vector<BlackoutWindow> windows_;
    std::unique_ptr<Observation> screenChangeObserver_;
    std::unique_ptr<Timer> enforceTimer_;
    Rect excludedScreenFrame_;
    bool isActive_ = false;
};

}  // namespace vantrel
