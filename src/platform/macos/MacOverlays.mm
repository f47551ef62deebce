#include "platform/macos/MacOverlays.h"

#include "platform/macos/MacOverlay.h"
#include "platform/macos/MainThread.h"

namespace vantrel::macos {

std::unique_ptr<Overlay> MacOverlays::makeOverlay(const OverlayDescription& description) {
    requireMainThread("makeOverlay");
    return std::make_unique<MacOverlay>(description);
}

}  // namespace vantrel::macos
