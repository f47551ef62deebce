#pragma once

#include <xcb/res.h>

#include <atomic>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/apps/ProcessLauncher.h"
#include "platform/linux/x11/AskedProperty.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Rectangle.h"

namespace vantrel::linuxdesktop {

/// The windows of all applications, through the window manager's EWMH interface. Any thread.
class X11Windows {
  public:
    /// The process that counts as the owner of a process's windows.
    using Owner = std::function<ProcessIdentifier(ProcessIdentifier)>;

    explicit X11Windows(X11Connection& connection, Owner owner = {})
        : connection_(connection), owner_(std::move(owner)) {}

    /// The managed windows of all desktops, front to back.
    std::vector<xcb_window_t> frontToBack();

    /// The same in two steps, for asking other things in between.
    [[nodiscard]] AskedProperty askFrontToBack();
    std::vector<xcb_window_t> frontToBack(AskedProperty& asked);

    /// The managed windows of a process, front to back.
    std::vector<xcb_window_t> ofProcess(ProcessIdentifier process);

    /// The same by the window manager's list, which may still name a window that is gone. The server then gives it the
    /// process of the next client with that number.
    std::vector<xcb_window_t> listedOf(ProcessIdentifier process);

    /// The process that owns a window; 0 if unknown.
    ProcessIdentifier owner(xcb_window_t window);

    /// The same for many windows, in their order.
    std::vector<ProcessIdentifier> owners(const std::vector<xcb_window_t>& windows);

    /// The same in two steps. Each question has to be answered.
    struct AskedOwners {
        std::vector<xcb_window_t> windows;
        std::optional<xcb_res_query_client_ids_cookie_t> cookie;
    };
    [[nodiscard]] AskedOwners askOwners(const std::vector<xcb_window_t>& windows);
    std::vector<ProcessIdentifier> owners(const AskedOwners& asked);

    /// The processes that really own the windows of this one: usually itself.
    std::vector<ProcessIdentifier> behind(ProcessIdentifier process);

    /// The window with the focus.
    std::optional<xcb_window_t> active();
    [[nodiscard]] AskedProperty askActive();
    static std::optional<xcb_window_t> active(AskedProperty& asked);

    /// What is known of the window with the focus.
    struct Active {
        xcb_window_t window = XCB_WINDOW_NONE;
        X11Rectangle frame;
        ProcessIdentifier owner = 0;
    };
    /// Empty if no window has the focus, or if it is gone: the window manager may still name it, and the server would
    /// report the next owner of its number.
    std::optional<Active> activeWindow();

    /// A window's place in the root window, without its decorations. Empty if the window is gone.
    std::optional<X11Rectangle> frame(xcb_window_t window);

    /// Brings a window to the front and gives it the focus, changing to its desktop first.
    void activate(xcb_window_t window);

    /// The same, but on the desktop that is current when the window manager handles the request.
    void focus(xcb_window_t window);

    /// Adds or removes a window's _NET_WM_STATE_….
    void changeState(xcb_window_t window, bool add, std::string_view state, std::string_view secondState = {});
    void unmaximize(xcb_window_t window);

    /// Places the corner of its decorations.
    void move(xcb_window_t window, int x, int y);
    /// The size without decorations.
    void resize(xcb_window_t window, int width, int height);

    /// Asks a window to close.
    void close(xcb_window_t window);

  private:
    struct AskedFrame {
        xcb_get_geometry_cookie_t size;
        xcb_translate_coordinates_cookie_t place;
    };

    struct AskedFacts {
        xcb_window_t window;
        AskedFrame frame;
        AskedOwners owner;
    };

    AskedFrame askFrame(xcb_window_t window);
    std::optional<X11Rectangle> frame(const AskedFrame& asked);
    AskedFacts askFacts(xcb_window_t window);
    std::optional<Active> facts(const AskedFacts& asked);
    std::vector<ProcessIdentifier> realOwners(const AskedOwners& asked);
    std::vector<ProcessIdentifier> claimedOwners(const std::vector<xcb_window_t>& windows);

    X11Connection& connection_;
    const Owner owner_;
    std::atomic<xcb_window_t> lastActive_ = XCB_WINDOW_NONE;
};

}  // namespace vantrel::linuxdesktop
