#include "platform/linux/guard/process/KeyWatch.h"

#include <poll.h>
#include <sys/socket.h>
#include <xcb/xinput.h>

#include <algorithm>
#include <array>
#include <utility>

#include "platform/linux/x11/XInputExtension.h"

namespace vantrel::linuxdesktop {

namespace {

struct RawKeysMask {
    xcb_input_event_mask_t header{XCB_INPUT_DEVICE_ALL, 1};
    std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS;
};

constexpr char question = '?';
constexpr char answer = '!';

void say(int line, char byte) {
    send(line, &byte, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
}

void sync(xcb_connection_t* connection) {
    const X11Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

}  // namespace

std::unique_ptr<KeyWatch> KeyWatch::open() {
    auto connection = X11Connection::open();
    if (!connection) return nullptr;
    const auto extension = xInputExtension(*connection);
    if (!extension) return nullptr;
    return std::unique_ptr<KeyWatch>(new KeyWatch(std::move(connection), *extension));
}

KeyWatch::KeyWatch(std::unique_ptr<X11Connection> connection, std::uint8_t extension)
    : connection_(std::move(connection)), extension_(extension) {
    const RawKeysMask rawKeys;
    xcb_input_xi_select_events(connection_->get(), connection_->root(), 1, &rawKeys.header);
    sync(connection_->get());
}

void KeyWatch::watch(int line, std::uint32_t resource) {
    say(line, question);
    while (connection_->isAlive()) {
        if (keyWasPressed() && !pressed_) pressed_ = std::chrono::steady_clock::now();
        std::array<pollfd, 2> sources{pollfd{line, POLLIN, 0},
                                      pollfd{xcb_get_file_descriptor(connection_->get()), POLLIN, 0}};
        poll(sources.data(), sources.size(), untilDue(std::chrono::steady_clock::now()));
        if (sources[0].revents != 0 && !takeFrom(line)) return;
        // Read after the line: an answer that came while this process did not run still counts.
        const Time now = std::chrono::steady_clock::now();
        if (asked_ && now >= *asked_ + forAnswer) {
            if (serverWasBusy()) {
                asked_ = std::chrono::steady_clock::now();
                continue;
            }
            xcb_kill_client(connection_->get(), resource);
            sync(connection_->get());
            return;
        }
        if (!asked_ && pressed_ && now >= *pressed_ + beforeQuestion) {
            // The answer does not cover keys that are pressed from here on.
            pressed_.reset();
            asked_ = now;
            say(line, question);
        }
    }
}

// False if the other end is gone. A question from the filter does not answer this process's own: it may be older.
bool KeyWatch::takeFrom(int line) {
    std::array<char, 16> bytes{};
    const ssize_t count = recv(line, bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count <= 0) return false;
    const auto end = bytes.begin() + count;
    if (std::find(bytes.begin(), end, answer) != end) asked_.reset();
    if (std::find(bytes.begin(), end, question) != end) say(line, answer);
    return true;
}

bool KeyWatch::keyWasPressed() {
    bool pressed = false;
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
        if (event->response_type != XCB_GE_GENERIC) continue;
        const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(*event);
        pressed = pressed || (generic.extension == extension_ && generic.event_type == XCB_INPUT_RAW_KEY_PRESS);
    }
    return pressed;
}

// While another client grabs the server, the filter may be waiting too.
bool KeyWatch::serverWasBusy() {
    const auto before = std::chrono::steady_clock::now();
    sync(connection_->get());
    return std::chrono::steady_clock::now() - before > forAnswer / 4;
}

int KeyWatch::untilDue(Time now) const {
    constexpr int forEver = -1;
    if (!asked_ && !pressed_) return forEver;
    const Time due = asked_ ? *asked_ + forAnswer : *pressed_ + beforeQuestion;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(due - now).count();
    return static_cast<int>(std::max<decltype(left)>(left, 0));
}

}  // namespace vantrel::linuxdesktop
