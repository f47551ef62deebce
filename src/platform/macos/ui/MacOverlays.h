#pragma once

#include "platform/macos/ui/BlackoutWindow.h"
#include "platform/ui/Overlay.h"

namespace vantrel::macos {

/// One BlackoutWindow. Calls do nothing once it is closed. Main thread.
class MacOverlay final : public Overlay {
  public:
    explicit MacOverlay(const OverlayDescription& description);
    ~MacOverlay() override;

    void setLevel(int level) override;
    void orderFrontRegardless() override;
    void orderOut() override;
    void close() override;

  private:
    BlackoutWindow* window_;
};

class MacOverlays final : public Overlays {
  public:
    [[nodiscard]] std::unique_ptr<Overlay> makeOverlay(const OverlayDescription& description) override;
};

}  // namespace vantrel::macos
