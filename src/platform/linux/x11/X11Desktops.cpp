#include "platform/linux/x11/X11Desktops.h"

#include <chrono>
#include <thread>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

namespace {

template <typename Condition>
bool isSoon(Condition condition) {
    constexpr auto longest = std::chrono::milliseconds(200);
    constexpr auto step = std::chrono::milliseconds(1);
    const auto end = std::chrono::steady_clock::now() + longest;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end) return false;
        std::this_thread::sleep_for(step);
    }
    return true;
}

}  // namespace

std::optional<std::uint32_t> X11Desktops::count() {
    return AskedProperty(connection_, connection_.root(), "_NET_NUMBER_OF_DESKTOPS").value();
}

std::optional<std::uint32_t> X11Desktops::current() {
    return askCurrent().value();
}

AskedProperty X11Desktops::askCurrent() {
    return {connection_, connection_.root(), "_NET_CURRENT_DESKTOP"};
}

bool X11Desktops::setCount(std::uint32_t wanted) {
    connection_.tellWindowManager(connection_.root(), "_NET_NUMBER_OF_DESKTOPS", {wanted});
    return isSoon([this, wanted] { return count() == wanted; });
}

bool X11Desktops::goTo(std::uint32_t desktop) {
    switchTo(desktop);
    return isSoon([this, desktop] { return current() == desktop; });
}

void X11Desktops::switchTo(std::uint32_t desktop) {
    connection_.tellWindowManager(connection_.root(), "_NET_CURRENT_DESKTOP", {desktop, XCB_CURRENT_TIME});
}

void X11Desktops::move(xcb_window_t window, std::uint32_t desktop) {
    connection_.tellWindowManager(window, "_NET_WM_DESKTOP", {desktop, onBehalfOfUser});
}

}  // namespace vantrel::linuxdesktop
