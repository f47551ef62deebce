#include "tests/linux/x11/WindowManagerPause.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>

#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

namespace {

pid_t windowManager(X11Connection& connection) {
    const auto window = connection.values(connection.root(), "_NET_SUPPORTING_WM_CHECK");
    return window.empty() ? 0 : X11Windows(connection).owner(window.front());
}

}  // namespace

WindowManagerPause::WindowManagerPause(X11Connection& connection, double seconds)
    : process_(windowManager(connection)) {
    EXPECT_GT(process_, 0) << "no window manager is to be found";
    if (process_ <= 0) return;
    kill(process_, SIGSTOP);
    resuming_ = std::thread([this, seconds] {
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
        kill(process_, SIGCONT);
    });
}

WindowManagerPause::~WindowManagerPause() {
    if (resuming_.joinable()) resuming_.join();
}

}  // namespace vantrel::linuxdesktop
