#pragma once

#include <string>
#include <vector>

#include "platform/desktop/Geometry.h"

namespace vantrel::standins {

enum class MouseButton { left, right, other };

/// A click on the front one of the client's covers there, in points from the bottom left of the primary display. The
/// view under the mouse decides, as AppKit has it, whether the click brings the client to the front and whether it gets
/// the click of a client that is not in front. Main thread. Does nothing if no cover is there.
void clickOnCover(const Point& point, MouseButton button);

/// Return in the client's only window on the screen. The system asks the window's buttons for their key equivalents.
/// Main thread.
void pressReturn();

/// The identifiers of the controls on the screen along the key view loop of the client's only window. Main thread.
std::vector<std::string> tabOrder();

}  // namespace vantrel::standins
