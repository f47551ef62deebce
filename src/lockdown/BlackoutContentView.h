#pragma once

#include <vector>

#include "platform/ui/Overlay.h"

namespace vantrel {

/// What a covered display shows: a lock, the product's name and a notice, around the middle. The pointer over it is the
/// operation-not-allowed cursor.
class BlackoutContentView {
  public:
    /// The labels for content of that size, from its bottom left.
    static std::vector<OverlayLabel> labels(const Size& size);
};

}  // namespace vantrel
