#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::linuxdesktop {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

/// An answer of the X server, which XCB hands over for the taker to free; null when the request failed.
template <typename T>
using X11Reply = std::unique_ptr<T, FreeDeleter>;

/// A connection to the X server of DISPLAY, of our own beside Qt's, for what Qt has no word for. Requests may be made
/// on any thread.
class X11Connection {
  public:
    /// Null when there is no X server to be reached.
    static std::unique_ptr<X11Connection> open();

    xcb_connection_t* get() const { return connection_.get(); }
    xcb_window_t root() const { return root_; }
    xcb_atom_t atom(std::string_view name);

    /// False once the server has gone or has cut us off; every answer is empty from then on.
    bool isAlive() const { return xcb_connection_has_error(get()) == 0; }

    /// The 32-bit values of a property; empty when it is missing or of another format.
    std::vector<std::uint32_t> values(xcb_window_t window, std::string_view property);

    /// Sends a client message to the root window, where the window manager reads it.
    void tellWindowManager(xcb_window_t window, std::string_view message, const std::vector<std::uint32_t>& data);

    /// Whether the server has the extension.
    bool hasExtension(std::string_view name);

    /// The names of the outputs; empty without RandR.
    std::vector<std::string> outputNames();

  private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    X11Connection(std::unique_ptr<xcb_connection_t, Disconnect> connection, xcb_window_t root);

    const std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    const xcb_window_t root_;
    std::mutex mutex_;
    std::map<std::string, xcb_atom_t, std::less<>> atoms_;
};

}  // namespace vantrel::linuxdesktop
