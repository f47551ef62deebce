#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Rectangle.h"

namespace vantrel::linuxdesktop {

/// A window of another X client, on its own connection. It stays until it is closed or destroyed.
class ForeignWindow {
  public:
    ForeignWindow(const std::string& title, const X11Rectangle& place, const std::string& type = "NORMAL");
    ~ForeignWindow();
    ForeignWindow(const ForeignWindow&) = delete;
    ForeignWindow& operator=(const ForeignWindow&) = delete;

    xcb_window_t id() const { return window_; }
    X11Connection& connection() { return *connection_; }

    /// Whether it has been asked to close since the last call.
    bool wasAskedToClose();

    void setProperty(const std::string& name, xcb_atom_t type, const std::vector<std::uint32_t>& values);
    /// Like a program that changes its own window.
    void changeState(bool add, const std::string& state);
    void minimize();
    void unmap();
    void destroy();

  private:
    std::unique_ptr<X11Connection> connection_;
    xcb_window_t window_;
};

}  // namespace vantrel::linuxdesktop
