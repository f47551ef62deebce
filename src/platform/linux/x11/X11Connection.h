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
    // xcb allocates with malloc.
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
    void operator()(void* memory) const { std::free(memory); }
};

/// EWMH's source indication 2: on the user's behalf, as a pager asks. With 1 a window manager may hold the client's end
/// screen back behind the browser, to protect what the user was typing.
constexpr std::uint32_t onBehalfOfUser = 2;

/// A reply of the X server, which XCB leaves to the receiver to free. Null if the request failed.
template <typename T>
using X11Reply = std::unique_ptr<T, FreeDeleter>;

/// A connection to the X server of DISPLAY, separate from Qt's, for what Qt cannot do. Requests may be made on any
/// thread.
class X11Connection {
  public:
    /// Null if no X server can be reached.
    static std::unique_ptr<X11Connection> open();

    xcb_connection_t* get() const { return connection_.get(); }
    xcb_window_t root() const { return root_; }
    xcb_atom_t atom(std::string_view name);
    /// As the server has it, in any encoding. Empty if there is no such atom.
    std::string nameOf(xcb_atom_t atom);

    /// False once the server is gone or has disconnected us. From then on every answer is empty.
    bool isAlive() const { return xcb_connection_has_error(get()) == 0; }

    /// The 32-bit values of a property. Empty if it is missing or has another format.
    std::vector<std::uint32_t> values(xcb_window_t window, std::string_view property);

    /// Sends a client message to the root window, where the window manager reads it.
    void tellWindowManager(xcb_window_t window, std::string_view message, const std::vector<std::uint32_t>& data);

    /// Whether the server has the extension.
    bool hasExtension(std::string_view name);

    /// The names of the outputs. Empty without RandR.
    std::vector<std::string> outputNames();

  private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    X11Connection(std::unique_ptr<xcb_connection_t, Disconnect> connection, xcb_window_t root);

    const std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    const xcb_window_t root_;
    std::mutex mutex_;
    // An atom keeps its name as long as the server lives.
    std::map<std::string, xcb_atom_t, std::less<>> atoms_;
    std::map<xcb_atom_t, std::string> names_;
};

}  // namespace vantrel::linuxdesktop
