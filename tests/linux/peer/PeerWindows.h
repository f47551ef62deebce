#pragma once

#include <xcb/xcb.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/contracts/PeerOptions.h"

namespace vantrel::peer {

/// The peer's windows, on their own connection.
class PeerWindows {
  public:
    /// Null if the X server cannot be reached.
    static std::unique_ptr<PeerWindows> open();

    void add(const PeerWindowOption& option, const std::string& windowClass);
    bool empty() const { return windows_.empty(); }

    int descriptor() const { return xcb_get_file_descriptor(connection_.get()); }
    /// Reads what the server has sent, and closes the windows that were asked to close. False if the server is gone.
    bool takeEvents();

  private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    PeerWindows(std::unique_ptr<xcb_connection_t, Disconnect> connection, const xcb_screen_t& screen);

    xcb_atom_t atom(const std::string& name);
    void setText(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const std::string& text);
    void close(xcb_window_t window);

    const std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    const xcb_screen_t screen_;
    const xcb_atom_t protocols_;
    const xcb_atom_t deleteWindow_;
    std::vector<xcb_window_t> windows_;
};

}  // namespace vantrel::peer
