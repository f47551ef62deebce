#pragma once

#include <xcb/xproto.h>

#include <cstdint>
#include <map>

namespace vantrel::linuxdesktop {

class X11Connection;

/// The server's numbers for the names by which windows are described.
struct WindowAtoms {
    explicit WindowAtoms(X11Connection& connection);

    const xcb_atom_t title, type, state, desktop, frameExtents, shadowExtents, allowed, motif;
    const xcb_atom_t hidden, fullScreen, maximizedWide, maximizedHigh, mayClose, mayBeFullScreen;

    /// The layers of the types of windows, as macOS numbers them.
    const std::map<xcb_atom_t, std::int64_t> layers;
};

}  // namespace vantrel::linuxdesktop
