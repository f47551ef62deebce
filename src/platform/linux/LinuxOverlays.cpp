#include "platform/linux/LinuxOverlays.h"

#include "platform/linux/LinuxOverlay.h"
#include "platform/linux/LinuxScreens.h"
#include "platform/linux/MainThread.h"

namespace vantrel::linuxdesktop {

std::unique_ptr<Overlay> LinuxOverlays::makeOverlay(const OverlayDescription& description) {
    MainThread::require("makeOverlay");
    return std::make_unique<LinuxOverlay>(description, screens_.toPixels(description.frame), connection_, front_);
}

}  // namespace vantrel::linuxdesktop
