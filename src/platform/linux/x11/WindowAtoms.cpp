#include "platform/linux/x11/WindowAtoms.h"

#include <string>

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11WindowFacts.h"

namespace vantrel::linuxdesktop {

namespace {

// The layers that macOS gives to the Dock, to the desktop picture and to floating panels.
constexpr std::int64_t dockLayer = 20;
constexpr std::int64_t desktopLayer = -2147483623;
constexpr std::int64_t floatingLayer = 3;

std::map<xcb_atom_t, std::int64_t> layersOfTypes(X11Connection& connection) {
    std::map<xcb_atom_t, std::int64_t> layers;
    const auto add = [&](const std::string& type, std::int64_t layer) {
        layers.emplace(connection.atom("_NET_WM_WINDOW_TYPE_" + type), layer);
    };
    for (const char* type : {"NORMAL", "DIALOG", "UTILITY"}) add(type, X11WindowFacts::ordinaryLayer);
    for (const char* type :
         {"TOOLBAR", "MENU", "SPLASH", "DROPDOWN_MENU", "POPUP_MENU", "TOOLTIP", "NOTIFICATION", "COMBO", "DND"}) {
        add(type, floatingLayer);
    }
    add("DOCK", dockLayer);
    add("DESKTOP", desktopLayer);
    return layers;
}

}  // namespace

WindowAtoms::WindowAtoms(X11Connection& connection)
    : title(connection.atom("_NET_WM_NAME")),
      type(connection.atom("_NET_WM_WINDOW_TYPE")),
      state(connection.atom("_NET_WM_STATE")),
      desktop(connection.atom("_NET_WM_DESKTOP")),
      frameExtents(connection.atom("_NET_FRAME_EXTENTS")),
      shadowExtents(connection.atom("_GTK_FRAME_EXTENTS")),
      allowed(connection.atom("_NET_WM_ALLOWED_ACTIONS")),
      motif(connection.atom("_MOTIF_WM_HINTS")),
      hidden(connection.atom("_NET_WM_STATE_HIDDEN")),
      fullScreen(connection.atom("_NET_WM_STATE_FULLSCREEN")),
      maximizedWide(connection.atom("_NET_WM_STATE_MAXIMIZED_HORZ")),
      maximizedHigh(connection.atom("_NET_WM_STATE_MAXIMIZED_VERT")),
      mayClose(connection.atom("_NET_WM_ACTION_CLOSE")),
      mayBeFullScreen(connection.atom("_NET_WM_ACTION_FULLSCREEN")),
      layers(layersOfTypes(connection)) {}

}  // namespace vantrel::linuxdesktop
