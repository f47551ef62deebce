#pragma once

#include <xcb/randr.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Rectangle.h"

namespace vantrel::linuxdesktop {

/// One display as RandR 1.5 lists it.
struct X11Monitor {
    std::string name;
    X11Rectangle frame;
    bool operator==(const X11Monitor&) const = default;
};

/// The displays, the primary one first: the one marked as such, or else the one at the top left, or else the first. A
/// display that shows all or part of another is a mirror and not listed. Without RandR the whole root window is one
/// display. Any thread.
class X11Monitors {
  public:
    explicit X11Monitors(X11Connection& connection) : connection_(connection) {}

    std::vector<X11Monitor> all() { return all(ask()); }

    /// The same in two steps, for asking other things in between. Each question has to be answered.
    struct Asked {
        std::optional<xcb_randr_get_monitors_cookie_t> cookie;
    };
    [[nodiscard]] Asked ask();
    std::vector<X11Monitor> all(const Asked& asked);

    /// The display that contains most of the rectangle. Empty if none contains any of it.
    static std::optional<X11Monitor> holding(const std::vector<X11Monitor>& monitors, const X11Rectangle& rectangle);

  private:
    static void leaveOutMirrors(std::vector<X11Monitor>& monitors);
    std::vector<X11Monitor> wholeRoot();

    X11Connection& connection_;
};

}  // namespace vantrel::linuxdesktop
