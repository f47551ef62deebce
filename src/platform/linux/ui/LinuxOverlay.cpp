#include "platform/linux/ui/LinuxOverlay.h"

#include <unistd.h>

#include <cstdint>
#include <utility>

#include "platform/linux/guard/GuardSource.h"
#include "platform/linux/threads/MainThread.h"
#include "platform/linux/ui/QtConnection.h"
#include "platform/linux/x11/FrontWindows.h"
#include "platform/portable/StandardError.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr int ordinaryLevel = 0;

QRect rectangle(const X11Rectangle& place) {
    return {place.x, place.y, place.width, place.height};
}

}  // namespace

LinuxOverlay::LinuxOverlay(const OverlayDescription& description, Dependencies dependencies)
    : connection_(dependencies.connection),
      front_(dependencies.front),
      level_(description.level),
      source_(dependencies.guards),
      guards_(source_.guards()),
      window_(std::make_unique<OverlayWindow>(rectangle(dependencies.place), description.labels)) {
    const auto id = static_cast<xcb_window_t>(window_->winId());
    // The server itself paints the window black while the main thread is busy. It must know the window first, which was
    // created on Qt's connection.
    waitForQtRequests();
    const auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection_.get()));
    const std::uint32_t black = screen.rem > 0 ? screen.data->black_pixel : 0;
    xcb_change_window_attributes(connection_.get(), id, XCB_CW_BACK_PIXEL, &black);
    // A compositor that took the cover for a full-screen video would stop painting everything else.
    constexpr std::uint32_t never = 2;
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, id, connection_.atom("_NET_WM_BYPASS_COMPOSITOR"),
                        XCB_ATOM_CARDINAL, 32, 1, &never);
    const auto client = static_cast<std::uint32_t>(getpid());
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, id, connection_.atom(coverMark), XCB_ATOM_CARDINAL,
                        32, 1, &client);
    xcb_flush(connection_.get());
}

LinuxOverlay::~LinuxOverlay() {
    close();
}

void LinuxOverlay::setLevel(int level) {
    MainThread::require("setLevel");
    level_ = level;
    keepInFront();
}

void LinuxOverlay::orderFrontRegardless() {
    MainThread::require("orderFrontRegardless");
    if (!window_) return;
    if (!isGuarded()) return orderOut();
    if (!window_->isVisible()) window_->show();
    if (level_ <= ordinaryLevel) window_->raise();
    waitForQtRequests();
    // Qt does not know when a guard has taken the window off the screen.
    xcb_map_window(connection_.get(), static_cast<xcb_window_t>(window_->winId()));
    xcb_flush(connection_.get());
    keepInFront();
    front_.restack();
}

// A cover that nobody takes away from a stopped client would hold the person.
bool LinuxOverlay::isGuarded() {
    if (!guards_) guards_ = source_.guards();
    const bool guarded = guards_ && guards_->areThere();
    if (!std::exchange(saidUnguarded_, !guarded) && !guarded) {
        sayOnStandardError("vantrel: a display is not covered: no process that could uncover it can be started\n");
    }
    return guarded;
}

void LinuxOverlay::keepInFront() {
    const bool wanted = window_ && window_->isVisible() && level_ > ordinaryLevel;
    if (!wanted) {
        kept_.reset();
    } else if (!kept_) {
        kept_ = front_.keep(static_cast<xcb_window_t>(window_->winId()), FrontWindows::Rank::overlay);
    }
}

// Takes effect at once, even if the main thread is then busy for seconds.
void LinuxOverlay::orderOut() {
    MainThread::require("orderOut");
    kept_.reset();
    if (!window_) return;
    window_->hide();
    waitForQtRequests();
}

void LinuxOverlay::close() {
    if (!window_) return;
    orderOut();
    window_.reset();
    waitForQtRequests();
}

}  // namespace vantrel::linuxdesktop
