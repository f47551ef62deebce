// Whether a busy computer costs the keyboard tap: beside 50 busy loops somebody types, and the client's main thread has
// work of its own. Needs an X11 display with a window manager: script/desktop.
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/keyboard/KeyPositions.h"
#include "tests/linux/keyboard/KeyboardClientProcess.h"
#include "tests/linux/x11/KeyWindow.h"
#include "tests/linux/x11/TestKeyboard.h"

namespace {

using namespace vantrel::linuxdesktop;
using Clock = std::chrono::steady_clock;

constexpr int runs = 20;
constexpr int loops = 50;
constexpr auto typing = std::chrono::seconds(5);

bool waitFor(const std::function<bool()>& condition) {
    const auto end = Clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (Clock::now() >= end) return false;
        usleep(20000);
    }
    return true;
}

// Types beside the loops. The client works a twentieth of a second of processor time for each key.
void typeBesideLoops(KeyboardClientProcess& client, TestKeyboard& keyboard) {
    std::atomic<bool> done = false;
    std::vector<std::thread> busy;
    busy.reserve(loops);
    for (int i = 0; i < loops; ++i) {
        busy.emplace_back([&done] {
            while (!done.load(std::memory_order_relaxed)) {
            }
        });
    }
    const auto end = Clock::now() + typing;
    while (Clock::now() < end) {
        keyboard.type(positionOfB);
        client.tell('w');
        usleep(50000);
    }
    done = true;
    for (std::thread& each : busy) each.join();
}

bool swallows(TestKeyboard& keyboard, KeyWindow& window) {
    window.pressed();
    window.forget();
    keyboard.type(positionOfQ, commandFlag);
    keyboard.type(positionOfA);
    const bool arrived = waitFor([&] {
        const auto positions = window.positions();
        return std::find(positions.begin(), positions.end(), positionOfA) != positions.end();
    });
    const auto positions = window.positions();
    return arrived && std::find(positions.begin(), positions.end(), positionOfQ) == positions.end();
}

}  // namespace

int main() {
    TestKeyboard keyboard;
    KeyWindow window;
    if (!waitFor([&] { return window.hasFocus(); })) return 1;
    int lost = 0;
    for (int run = 1; run <= runs; ++run) {
        KeyboardClientProcess client(VANTREL_HOLDING_CLIENT);
        if (client.line() != "ready" || !swallows(keyboard, window)) return 1;
        typeBesideLoops(client, keyboard);
        if (!client.isThere()) return 1;
        if (!swallows(keyboard, window)) ++lost;
        std::printf("run %d of %d beside %d loops: %d taps lost\n", run, runs, loops, lost);
        std::fflush(stdout);
    }
    return 0;
}
