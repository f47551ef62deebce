#pragma once

#include <memory>

#include "platform/desktop/Screens.h"
#include "platform/ui/Overlay.h"

namespace vantrel {

/// Covers one display. It never takes the keyboard focus and lets no click through. Main thread. The destructor closes
/// it.
class BlackoutWindow {
  public:
    BlackoutWindow(Overlays& overlays, const Screen& screen);

    /// Puts it on top again, in case other windows have come in front.
    void enforce();
    void close();

  private:
    std::unique_ptr<Overlay> window_;
};

}  // namespace vantrel
