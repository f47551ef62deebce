#pragma once

#include <cstddef>
#include <optional>

#include "platform/Screens.h"

namespace vantrel {

/// Covers every display but one during a lockdown. Main thread. The covers are still to come: no display is covered
/// yet.
class BlackoutOverlayManager {
  public:
    /// Covers every screen but `excludedScreen`.
    void activate(const std::optional<Screen>& excludedScreen);
    void deactivate();

    /// How many overlays are shown.
    std::size_t windowCount() const { return 0; }
};

}  // namespace vantrel
