#include "platform/linux/ui/LinuxOverlays.h"

#include "platform/linux/desktop/LinuxScreens.h"
#include "platform/linux/guard/GuardSource.h"
#include "platform/linux/threads/MainThread.h"
#include "platform/linux/ui/LinuxOverlay.h"

namespace vantrel::linuxdesktop {

std::unique_ptr<Overlay> LinuxOverlays::makeOverlay(const OverlayDescription& description) {
    MainThread::require("makeOverlay");
    return std::make_unique<LinuxOverlay>(
        description, LinuxOverlay::Dependencies{screens_.toPixels(description.frame), connection_, front_, guards_});
}

}  // namespace vantrel::linuxdesktop
