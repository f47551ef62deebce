#pragma once

namespace vantrel::linuxdesktop {

/// In pixels from the top left of the X root window. One point is one pixel here.
struct X11Rectangle {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const X11Rectangle&) const = default;
};

}  // namespace vantrel::linuxdesktop
