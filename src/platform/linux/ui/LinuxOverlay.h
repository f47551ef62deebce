#pragma once

#include <memory>

#include "platform/linux/ui/OverlayWindow.h"
#include "platform/linux/x11/X11Rectangle.h"
#include "platform/threads/Observation.h"
#include "platform/ui/Overlay.h"

namespace vantrel::linuxdesktop {

class FrontWindows;
class GuardSource;
class Guards;
class X11Connection;

/// One overlay. X11 windows have no levels. So an overlay above the level of ordinary windows is kept in front of all
/// other applications' windows, and any other stays where it was put. Main thread.
class LinuxOverlay final : public Overlay {
  public:
    struct Dependencies {
        X11Rectangle place;
        X11Connection& connection;
        FrontWindows& front;
        /// They take the overlay off the screen when the client is stopped or hangs. While none is there it is
        /// not shown.
        GuardSource& guards;
    };

    LinuxOverlay(const OverlayDescription& description, Dependencies dependencies);
    ~LinuxOverlay() override;

    void setLevel(int level) override;
    void orderFrontRegardless() override;
    void orderOut() override;
    void close() override;

  private:
    bool isGuarded();
    void keepInFront();

    X11Connection& connection_;
    FrontWindows& front_;
    int level_;
    GuardSource& source_;
    std::shared_ptr<Guards> guards_;
    bool saidUnguarded_ = false;
    std::unique_ptr<OverlayWindow> window_;
    std::unique_ptr<Observation> kept_;
};

}  // namespace vantrel::linuxdesktop
