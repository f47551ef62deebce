#include "platform/linux/statusbar/TopEdge.h"

#include <array>
#include <utility>

#include "platform/linux/x11/FrontWindows.h"
#include "platform/linux/x11/X11Watcher.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr std::uint32_t thickness = 1;
// How far the pointer jumps between two reports of a mouse, eight milliseconds apart, when a hand slows down.
constexpr std::uint32_t borderThickness = 12;

}  // namespace

TopEdge::TopEdge(X11Connection& connection, X11Watcher& watcher, FrontWindows& front, Block onTouch)
    : connection_(connection), front_(front), window_(xcb_generate_id(connection.get())) {
    constexpr std::uint32_t unmanaged = 1;
    xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window_, connection_.root(), 0, 0, 1, thickness, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &unmanaged);
    // The watcher uses its own connection, so wait until the window exists.
    const auto cookie = xcb_get_input_focus(connection_.get());
    const X11Reply<xcb_get_input_focus_reply_t> made(xcb_get_input_focus_reply(connection_.get(), cookie, nullptr));
    watcher.watchPointer(window_);
    touches_ = watcher.observe(X11Watcher::Change::pointer, std::move(onTouch));
}

TopEdge::~TopEdge() {
    xcb_destroy_window(connection_.get(), window_);
    xcb_flush(connection_.get());
}

void TopEdge::lieAlong(const X11Rectangle& display, bool borderedFromAbove) {
    const std::array<std::uint32_t, 4> place{
        static_cast<std::uint32_t>(display.x), static_cast<std::uint32_t>(display.y),
        static_cast<std::uint32_t>(display.width), borderedFromAbove ? borderThickness : thickness};
    xcb_configure_window(connection_.get(), window_,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         place.data());
    xcb_flush(connection_.get());
}

void TopEdge::listen(bool listens) {
    if (listens == listens_) return;
    listens_ = listens;
    if (listens) {
        kept_ = front_.keep(window_, FrontWindows::Rank::topEdge);
        xcb_map_window(connection_.get(), window_);
        front_.restack();
    } else {
        kept_.reset();
        xcb_unmap_window(connection_.get(), window_);
    }
    xcb_flush(connection_.get());
}

}  // namespace vantrel::linuxdesktop
