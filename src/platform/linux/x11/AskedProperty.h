#pragma once

#include <xcb/xproto.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vantrel::linuxdesktop {

class X11Connection;

/// A property that the X server has been asked for. Whoever asks for several things before reading the first waits for
/// the server once. One thread at a time.
class AskedProperty {
  public:
    AskedProperty(X11Connection& connection, xcb_window_t window, std::string_view property);
    ~AskedProperty();
    AskedProperty(const AskedProperty&) = delete;
    AskedProperty& operator=(const AskedProperty&) = delete;

    /// Its 32-bit values. Empty if it is missing, has another format, or has been read before.
    std::vector<std::uint32_t> values();

    /// The first of them. Empty if there is none.
    std::optional<std::uint32_t> value();

  private:
    X11Connection& connection_;
    const xcb_get_property_cookie_t cookie_;
    bool wasRead_ = false;
};

}  // namespace vantrel::linuxdesktop
