// How long a person waits for the keyboard and the covered screen after the client, its guards or several of them were
// stopped or killed, in every order. Needs an X11 display with a window manager: script/desktop.
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "tests/linux/keyboard/KeyboardClientProcess.h"
#include "tests/linux/support/ProcessStates.h"
#include "tests/linux/x11/KeyWindow.h"
#include "tests/linux/x11/ServerView.h"
#include "tests/linux/x11/TestKeyboard.h"

namespace {

using namespace vantrel::linuxdesktop;
using Clock = std::chrono::steady_clock;

constexpr int runs = 20;
constexpr auto step = std::chrono::milliseconds(20);
constexpr auto tooLong = std::chrono::seconds(30);

struct Case {
    const char* name;
    std::function<void(pid_t client, const std::vector<pid_t>& guards)> harm;
};

const std::vector<Case> cases{
    {"the client is killed", [](pid_t client, const auto&) { kill(client, SIGKILL); }},
    {"the client is stopped", [](pid_t client, const auto&) { kill(client, SIGSTOP); }},
    {"a guard is killed, then the client stopped",
     [](pid_t client, const auto& guards) {
         kill(guards[0], SIGKILL);
         kill(client, SIGSTOP);
     }},
    {"the client is stopped, then a guard killed",
     [](pid_t client, const auto& guards) {
         kill(client, SIGSTOP);
         kill(guards[1], SIGKILL);
     }},
    {"a guard is stopped, then the client",
     [](pid_t client, const auto& guards) {
         kill(guards[0], SIGSTOP);
         kill(client, SIGSTOP);
     }},
    {"the client is stopped, then a guard",
     [](pid_t client, const auto& guards) {
         kill(client, SIGSTOP);
         kill(guards[1], SIGSTOP);
     }},
    {"both guards are killed, then the client",
     [](pid_t client, const auto& guards) {
         for (const pid_t guard : guards) kill(guard, SIGKILL);
         kill(client, SIGKILL);
     }},
    {"both guards are stopped, then the client killed",
     [](pid_t client, const auto& guards) {
         for (const pid_t guard : guards) kill(guard, SIGSTOP);
         kill(client, SIGKILL);
     }},
};

bool waitFor(const std::function<bool()>& condition) {
    const auto end = Clock::now() + tooLong;
    while (!condition()) {
        if (Clock::now() >= end) return false;
        usleep(std::chrono::microseconds(step).count());
    }
    return true;
}

bool covered(ServerView& view) {
    const auto overlays = view.named("Vantrel overlay");
    return std::any_of(overlays.begin(), overlays.end(), [](const auto& each) { return each.viewable; });
}

// Milliseconds until a typed key reaches another window and nothing is covered any more. Negative if it took too long.
double timeOf(const Case& one, ServerView& view, TestKeyboard& keyboard, KeyWindow& window) {
    KeyboardClientProcess client(VANTREL_HOLDING_CLIENT);
    if (client.line() != "ready") return -1;
    std::set<pid_t> guards;
    const bool stands = waitFor([&] {
        guards = childrenOf(client.process());
        return covered(view) && guards.size() == 2 && std::all_of(guards.begin(), guards.end(), isPresent);
    });
    if (!stands) return -1;
    window.pressed();
    window.forget();
    const auto begun = Clock::now();
    one.harm(client.process(), {guards.begin(), guards.end()});
    const bool freed = waitFor([&] {
        keyboard.type(positionOfB);
        return !window.pressed().empty() && !covered(view);
    });
    const std::chrono::duration<double, std::milli> took = Clock::now() - begun;
    client.signal(SIGCONT);
    return freed ? took.count() : -1;
}

}  // namespace

int main() {
    ServerView view;
    TestKeyboard keyboard;
    KeyWindow window;
    if (!waitFor([&] { return window.hasFocus(); })) return 1;
    std::printf("%-50s %8s %8s %8s   (ms, %d runs)\n", "", "least", "median", "most", runs);
    for (const Case& one : cases) {
        std::vector<double> times;
        for (int run = 0; run < runs; ++run) times.push_back(timeOf(one, view, keyboard, window));
        std::sort(times.begin(), times.end());
        std::printf("%-50s %8.0f %8.0f %8.0f\n", one.name, times.front(), times[times.size() / 2], times.back());
        std::fflush(stdout);
    }
    return 0;
}
