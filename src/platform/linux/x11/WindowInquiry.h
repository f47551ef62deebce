#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/x11/WindowAtoms.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11WindowFacts.h"

namespace vantrel::linuxdesktop {

/// The requests about one window, and what their answers say. The constructor sends them; every inquiry has to be
/// answered. The X server sends each answer by itself, and each may wake the client: so only what is needed is asked.
/// One thread at a time.
class WindowInquiry {
  public:
    enum class About {
        everything,
        /// Everything but what may be done with the window.
        look,
        /// Hidden, full screen, maximised.
        state,
        layer
    };

    WindowInquiry(X11Connection& connection, const WindowAtoms& atoms, xcb_window_t window, About about);

    xcb_window_t window() const { return window_; }

    /// Without the owner; what was not asked has its default. Empty if the window is gone. To be called once.
    std::optional<X11WindowFacts> answer();

  private:
    using Values = std::vector<std::uint32_t>;
    enum Index { title, oldTitle, type, state, desktop, frameExtents, shadowExtents, allowed, motif, propertyCount };

    struct Place {
        xcb_get_window_attributes_cookie_t attributes;
        xcb_get_geometry_cookie_t size;
        xcb_translate_coordinates_cookie_t position;
    };

    bool asksFor(std::size_t property) const;
    bool readPlace(X11WindowFacts& facts) const;
    void readType(X11WindowFacts& facts, const Values& types) const;
    void readState(X11WindowFacts& facts, const Values& states) const;
    void readActions(X11WindowFacts& facts, const Values& actions, const Values& hints) const;

    xcb_connection_t* connection_;
    const WindowAtoms& atoms_;
    xcb_window_t window_;
    About about_;
    std::optional<Place> place_;
    std::array<xcb_get_property_cookie_t, propertyCount> properties_{};
};

}  // namespace vantrel::linuxdesktop
