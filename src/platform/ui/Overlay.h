#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/desktop/Geometry.h"

namespace vantrel {

/// A centred text on an overlay: white of the given level, clear background, no border.
struct OverlayLabel {
    std::string text;
    double fontSize = 0;
    bool bold = false;
    double whiteLevel = 1;
    /// The label's bottom left. A label without a fixed size is sized to fit, and its left edge is at centreX − width ×
    /// 0.5.
    double centreX = 0;
    double y = 0;
    /// The size of a wrapping label. Zero for one that is sized to fit.
    Size fixedSize;
};

/// A borderless black window that never becomes key or main, absorbs clicks and shows the operation-not-allowed cursor.
struct OverlayDescription {
    /// Global frame in points from the bottom left of the primary display.
    Rect frame;
    int level = 0;
    unsigned collectionBehavior = 0;
    std::vector<OverlayLabel> labels;
};

/// The system's window behind a BlackoutWindow. Destroying it orders it out and closes it. Main thread.
class Overlay {
  public:
    virtual ~Overlay() = default;

    virtual void setLevel(int level) = 0;
    virtual void orderFrontRegardless() = 0;
    virtual void orderOut() = 0;
    virtual void close() = 0;
};

/// Creates overlays. Main thread.
class Overlays {
  public:
    virtual ~Overlays() = default;

    [[nodiscard]] virtual std::unique_ptr<Overlay> makeOverlay(const OverlayDescription& description) = 0;
};

}  // namespace vantrel
