// Measures what the Linux client's keyboard tap adds to a key press: the time from the server's receipt of the key to
// its arrival in the focused window, without a filter, with a plain grab that passes every key on, and with the tap.
// The three alternate in short blocks. Needs its own X11 display: it takes the focus and types.
#include <sys/socket.h>
#include <xcb/xcb.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "platform/linux/guard/GuardSource.h"
#include "platform/linux/keyboard/LinuxKeyboardTaps.h"
#include "platform/linux/threads/MainThread.h"
#include "platform/linux/x11/X11Connection.h"

namespace {

using namespace vantrel;
using namespace vantrel::linuxdesktop;

constexpr int keysInBlock = 250;
constexpr int rounds = 40;
constexpr xcb_keycode_t keyA = 38;

// A focused window that types into itself.
class Typist {
  public:
    Typist() : connection_(X11Connection::open()) {
        if (!connection_) return;
        xcb_connection_t* connection = connection_->get();
        window_ = xcb_generate_id(connection);
        const std::array<std::uint32_t, 2> values{
            1, XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_FOCUS_CHANGE};
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, window_, connection_->root(), 0, 0, 50, 50, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
        xcb_map_window(connection, window_);
        xcb_set_input_focus(connection, XCB_INPUT_FOCUS_POINTER_ROOT, window_, XCB_CURRENT_TIME);
        xcb_flush(connection);
        waitFor(XCB_FOCUS_IN);
    }

    bool isThere() const { return connection_ != nullptr; }

    /// Microseconds from the press to its arrival. Negative if the server is gone.
    double type() {
        const auto start = std::chrono::steady_clock::now();
        send(XCB_KEY_PRESS);
        const bool pressed = waitFor(XCB_KEY_PRESS);
        const std::chrono::duration<double, std::micro> taken = std::chrono::steady_clock::now() - start;
        send(XCB_KEY_RELEASE);
        return pressed && waitFor(XCB_KEY_RELEASE) ? taken.count() : -1;
    }

  private:
    void send(std::uint8_t type) {
        xcb_test_fake_input(connection_->get(), type, keyA, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
        xcb_flush(connection_->get());
    }

    bool waitFor(std::uint8_t type) {
        while (const X11Reply<xcb_generic_event_t> event{xcb_wait_for_event(connection_->get())}) {
            if ((event->response_type & 0x7F) == type) return true;
        }
        return false;
    }

    std::unique_ptr<X11Connection> connection_;
    xcb_window_t window_ = 0;
};

// The least that a filter can do: it passes every key on.
class PlainGrab {
  public:
    PlainGrab() : connection_(X11Connection::open()) {
        xcb_connection_t* connection = connection_->get();
        const X11Reply<xcb_input_xi_query_version_reply_t> version(
            xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
        const X11Reply<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
            connection, xcb_input_xi_query_device(connection, XCB_INPUT_DEVICE_ALL_MASTER), nullptr));
        auto each = xcb_input_xi_query_device_infos_iterator(devices.get());
        for (; each.rem > 0; xcb_input_xi_device_info_next(&each)) {
            if (each.data->type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD) grab(each.data->deviceid);
        }
        thread_ = std::thread([this] { passAll(); });
    }
    ~PlainGrab() {
        shutdown(xcb_get_file_descriptor(connection_->get()), SHUT_RDWR);
        thread_.join();
    }
    PlainGrab(const PlainGrab&) = delete;
    PlainGrab& operator=(const PlainGrab&) = delete;

    bool isGranted() const { return granted_; }

  private:
    void grab(std::uint16_t keyboard) {
        const std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
        const std::uint32_t anyModifier = 0x80000000U;
        const auto cookie = xcb_input_xi_passive_grab_device(
            connection_->get(), XCB_CURRENT_TIME, connection_->root(), XCB_CURSOR_NONE, 0, keyboard, 1, 1,
            XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_SYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
            XCB_INPUT_GRAB_OWNER_NO_OWNER, &events, &anyModifier);
        const X11Reply<xcb_input_xi_passive_grab_device_reply_t> reply(
            xcb_input_xi_passive_grab_device_reply(connection_->get(), cookie, nullptr));
        granted_ = reply && reply->num_modifiers == 0;
    }

    void passAll() {
        while (const X11Reply<xcb_generic_event_t> event{xcb_wait_for_event(connection_->get())}) {
            if (event->response_type != XCB_GE_GENERIC) continue;
            const auto& key = reinterpret_cast<const xcb_input_key_press_event_t&>(*event);
            xcb_input_xi_allow_events(connection_->get(), key.time, key.deviceid, XCB_INPUT_EVENT_MODE_REPLAY_DEVICE, 0,
                                      connection_->root());
            xcb_flush(connection_->get());
        }
    }

    std::unique_ptr<X11Connection> connection_;
    bool granted_ = false;
    std::thread thread_;
};

std::string_view commandQ(const KeyEvent& event) noexcept {
    return event.keyCode == 12 && (event.flags & 0x100000) != 0 ? "Cmd+Q" : std::string_view();
}

struct Way {
    const char* name;
    std::vector<double> microseconds;

    double at(double part) {
        std::sort(microseconds.begin(), microseconds.end());
        return microseconds[static_cast<std::size_t>(part * static_cast<double>(microseconds.size() - 1))];
    }
};

bool typeBlock(Typist& typist, std::vector<double>& microseconds) {
    for (int i = 0; i < keysInBlock; ++i) {
        const double taken = typist.type();
        if (taken < 0) return false;
        microseconds.push_back(taken);
    }
    return true;
}

bool measure(Typist& typist, MainThread& mainThread, std::array<Way, 3>& ways) {
    GuardSource guards(mainThread);
    // As in a class, where the guards start once. A start costs more than many keys and would compete with them.
    const auto running = guards.guards();
    LinuxKeyboardTaps taps(mainThread, guards);
    std::unique_ptr<KeyboardTap> tap;
    const auto onMain = [&](const std::function<void()>& block) {
        std::promise<void> done;
        mainThread.post([&] {
            block();
            done.set_value();
        });
        done.get_future().wait();
    };
    const std::array<std::function<bool(std::vector<double>&)>, 3> block{
        [&](auto& microseconds) { return typeBlock(typist, microseconds); },
        [&](auto& microseconds) {
            const PlainGrab grab;
            return grab.isGranted() && typeBlock(typist, microseconds);
        },
        [&](auto& microseconds) {
            onMain([&] { tap = taps.create(commandQ, {}); });
            const bool measured = tap && typeBlock(typist, microseconds);
            onMain([&] { tap.reset(); });
            return measured;
        }};
    for (std::size_t round = 0; round < rounds; ++round) {
        for (std::size_t turn = 0; turn < ways.size(); ++turn) {
            const std::size_t way = (round + turn) % ways.size();
            if (!block[way](ways[way].microseconds)) return false;
        }
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    MainThread mainThread;
    Typist typist;
    if (!typist.isThere()) {
        std::fputs("keyboard-latency: no X11 display can be reached\n", stderr);
        return 1;
    }
    std::array<Way, 3> ways{Way{"no filter", {}}, Way{"plain grab", {}}, Way{"keyboard tap", {}}};
    bool measured = false;
    std::thread person([&] {
        measured = measure(typist, mainThread, ways);
        mainThread.post([] { QCoreApplication::quit(); });
    });
    QCoreApplication::exec();
    person.join();
    if (!measured) {
        std::fputs("keyboard-latency: the keyboard cannot be filtered on this display\n", stderr);
        return 1;
    }
    for (Way& way : ways) {
        std::printf("%-12s  %zu keys  median %7.1f us  99%% %7.1f us\n", way.name, way.microseconds.size(), way.at(0.5),
                    way.at(0.99));
    }
    return 0;
}
