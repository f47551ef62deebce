#include "tests/linux/peer/PeerWindows.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace vantrel::peer {

namespace {

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

template <typename T>
using Reply = std::unique_ptr<T, FreeMemory>;

constexpr int numbersApart = 100000;

// ICCCM's WM_NORMAL_HINTS with place and size chosen by the user, so that the window manager respects them.
std::array<std::uint32_t, 18> sizeHints(const PeerWindowOption& option) {
    constexpr std::uint32_t userPosition = 1;
    constexpr std::uint32_t userSize = 2;
    std::array<std::uint32_t, 18> hints{};
    hints[0] = userPosition | userSize;
    hints[1] = static_cast<std::uint32_t>(option.x);
    hints[2] = static_cast<std::uint32_t>(option.y);
    hints[3] = static_cast<std::uint32_t>(option.width);
    hints[4] = static_cast<std::uint32_t>(option.height);
    return hints;
}

}  // namespace

std::unique_ptr<PeerWindows> PeerWindows::open() {
    int number = 0;
    std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(nullptr, &number));
    if (xcb_connection_has_error(connection.get()) != 0) return nullptr;
    const xcb_screen_t screen = *xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data;
    return std::unique_ptr<PeerWindows>(new PeerWindows(std::move(connection), screen));
}

PeerWindows::PeerWindows(std::unique_ptr<xcb_connection_t, Disconnect> connection, const xcb_screen_t& screen)
    : connection_(std::move(connection)),
      screen_(screen),
      protocols_(atom("WM_PROTOCOLS")),
      deleteWindow_(atom("WM_DELETE_WINDOW")) {
    // The server gives the same numbers to each client that comes and goes, and a window manager that missed a window's
    // end ignores the next one with its number. So each peer begins with a different number.
    for (int skipped = getpid() % numbersApart; skipped > 0; --skipped) xcb_generate_id(connection_.get());
}

xcb_atom_t PeerWindows::atom(const std::string& name) {
    const auto cookie = xcb_intern_atom(connection_.get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_.get(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void PeerWindows::setText(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const std::string& text) {
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

void PeerWindows::add(const PeerWindowOption& option, const std::string& windowClass) {
    xcb_connection_t* connection = connection_.get();
    const xcb_window_t window = xcb_generate_id(connection);
    const std::array<std::uint32_t, 2> attributes{screen_.white_pixel, XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen_.root, static_cast<std::int16_t>(option.x),
                      static_cast<std::int16_t>(option.y), static_cast<std::uint16_t>(option.width),
                      static_cast<std::uint16_t>(option.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen_.root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, attributes.data());

    setText(window, XCB_ATOM_WM_NAME, atom("UTF8_STRING"), option.title);
    setText(window, atom("_NET_WM_NAME"), atom("UTF8_STRING"), option.title);
    setText(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, std::string("peer") + '\0' + windowClass + '\0');
    const auto process = static_cast<std::uint32_t>(getpid());
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1,
                        &process);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, protocols_, XCB_ATOM_ATOM, 32, 1, &deleteWindow_);
    const auto hints = sizeHints(option);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32,
                        hints.size(), hints.data());
    xcb_map_window(connection, window);
    xcb_flush(connection);
    windows_.push_back(window);
}

bool PeerWindows::takeEvents() {
    constexpr std::uint8_t sentByClient = 0x80;
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        const std::uint8_t type = event->response_type & ~sentByClient;
        if (type == XCB_DESTROY_NOTIFY) {
            std::erase(windows_, reinterpret_cast<const xcb_destroy_notify_event_t&>(*event).window);
        } else if (type == XCB_CLIENT_MESSAGE) {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
            if (message.type == protocols_ && message.data.data32[0] == deleteWindow_) close(message.window);
        }
    }
    return xcb_connection_has_error(connection_.get()) == 0;
}

void PeerWindows::close(xcb_window_t window) {
    xcb_destroy_window(connection_.get(), window);
    xcb_flush(connection_.get());
    std::erase(windows_, window);
}

}  // namespace vantrel::peer
