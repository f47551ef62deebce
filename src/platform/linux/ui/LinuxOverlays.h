#pragma once

#include "platform/ui/Overlay.h"

namespace vantrel::linuxdesktop {

class FrontWindows;
class GuardSource;
class LinuxScreens;
class X11Connection;

/// Overlays on an X11 desktop. They must not outlive this object. Main thread.
class LinuxOverlays final : public Overlays {
  public:
    LinuxOverlays(LinuxScreens& screens, X11Connection& connection, FrontWindows& front, GuardSource& guards)
        : screens_(screens), connection_(connection), front_(front), guards_(guards) {}

    [[nodiscard]] std::unique_ptr<Overlay> makeOverlay(const OverlayDescription& description) override;

  private:
    LinuxScreens& screens_;
    X11Connection& connection_;
    FrontWindows& front_;
    GuardSource& guards_;
};

}  // namespace vantrel::linuxdesktop
