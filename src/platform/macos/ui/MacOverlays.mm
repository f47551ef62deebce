#include "platform/macos/ui/MacOverlays.h"

#include "platform/macos/threads/MainThread.h"
#include "platform/macos/ui/MacOverlay.h"

namespace vantrel::macos {

std::unique_ptr<Overlay> MacOverlays::makeOverlay(const OverlayDescription& description) {
    requireMainThread("makeOverlay");
    return std::make_unique<MacOverlay>(description);
}

}  // namespace vantrel::macos
