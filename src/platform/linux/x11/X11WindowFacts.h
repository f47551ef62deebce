#pragma once

#include <xcb/xproto.h>

#include <cstdint>
#include <optional>
#include <string>

#include "platform/apps/ProcessLauncher.h"
#include "platform/linux/x11/X11Rectangle.h"

namespace vantrel::linuxdesktop {

/// What a frame adds to a window on each side, in pixels. Negative if the window draws its own shadow around what the
/// user takes for the window.
struct X11Margins {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;
};

/// What is known of one window at a moment.
struct X11WindowFacts {
    static constexpr std::uint32_t allDesktops = 0xFFFFFFFF;
    static constexpr std::int64_t ordinaryLayer = 0;

    xcb_window_t window = XCB_WINDOW_NONE;
    /// 0 if unknown.
    ProcessIdentifier owner = 0;
    std::optional<std::string> title;
    /// With its decorations, in the root window.
    X11Rectangle frame;
    X11Margins margins;
    /// The part of those margins that the window's own shadow takes away.
    X11Margins shadow;
    /// Empty if the window manager has no desktops; allDesktops for a window that is on every one.
    std::optional<std::uint32_t> desktop;
    /// As on macOS.
    std::int64_t layer = ordinaryLayer;
    bool viewable = false;
    /// Not mapped, and not just waiting for its desktop to be shown.
    bool unmapped = false;
    /// Minimised.
    bool hidden = false;
    bool fullScreen = false;
    bool maximized = false;
    bool closable = true;
    bool mayBeFullScreen = true;

    bool isOnDesktop(std::optional<std::uint32_t> current) const {
        return !desktop || !current || *desktop == allDesktops || *desktop == *current;
    }
};

}  // namespace vantrel::linuxdesktop
