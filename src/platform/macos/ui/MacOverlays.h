#pragma once

#include "platform/ui/Overlay.h"

namespace vantrel::macos {

class MacOverlays final : public Overlays {
  public:
    [[nodiscard]] std::unique_ptr<Overlay> makeOverlay(const OverlayDescription& description) override;
};

}  // namespace vantrel::macos
