#pragma once

#include <vector>

#include "platform/ui/Overlay.h"

namespace vantrel {

/// The content of a covered display: a lock, the product's name and a notice, around the middle. The pointer over it is
/// the operation-not-allowed cursor.
class BlackoutContentView {
  public:
    /// The labels for content of that size. Positions count from its bottom left.
    static std::vector<OverlayLabel> labels(const Size& size);
};

}  // namespace vantrel
