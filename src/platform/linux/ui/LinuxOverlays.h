#pragma once

#include "platform/ui/Overlay.h"

namespace vantrel::linuxdesktop {

class FrontWindows;
class LinuxScreens;
class X11Connection;

/// Overlays on an X11 desktop. They must not outlive this object. Main thread.
class LinuxOverlays final : public Overlays {
  public:
    LinuxOverlays(LinuxScreens& screens, X11Connection& connection, FrontWindows& front)
        : screens_(screens), connection_(connection), front_(front) {}

    [[nodiscard]] std::unique_ptr<Overlay> makeOverlay(const OverlayDescription& description) override;

  private:
    LinuxScreens& screens_;
    X11Connection& connection_;
    FrontWindows& front_;
};

}  // namespace vantrel::linuxdesktop
