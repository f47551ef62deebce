#pragma once

#include <memory>

#include "platform/desktop/Screens.h"
#include "platform/ui/Overlay.h"

namespace vantrel {

/// Covers one display. It takes neither the keyboard focus nor lets a click through. Main thread; its end closes it.
class BlackoutWindow {
  public:
    BlackoutWindow(Overlays& overlays, const Screen& screen);

    /// Puts it above everything, where other windows may have come in between.
    void enforce();
    void close();

  private:
    std::unique_ptr<Overlay> window_;
};

}  // namespace vantrel
