#pragma once

#import <AppKit/NSView.h>

#include <vector>

#include "platform/ui/Overlay.h"

namespace vantrel::standins {

/// The texts on a cover, in the order in which they were added.
std::vector<OverlayLabel> overlayLabels(NSView* _Nullable content);

}  // namespace vantrel::standins
