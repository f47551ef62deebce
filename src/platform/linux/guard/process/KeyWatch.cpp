#include "platform/linux/guard/process/KeyWatch.h"

#include <sys/socket.h>
#include <xcb/xinput.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "platform/linux/guard/GuardMessage.h"
#include "platform/linux/x11/X11Windows.h"
#include "platform/linux/x11/XInputExtension.h"

namespace vantrel::linuxdesktop {

namespace {

using Clock = std::chrono::steady_clock;

struct RawKeysMask {
    xcb_input_event_mask_t header{XCB_INPUT_DEVICE_ALL, 1};
    std::uint32_t mask = 0;
};

void say(const FileDescriptor& line, char what) {
    send(line.get(), &what, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
}

void sync(xcb_connection_t* connection) {
    const X11Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

}  // namespace

std::unique_ptr<KeyWatch> KeyWatch::create(X11Connection& connection, pid_t client,
                                           std::function<void()> beforeWaiting) {
    const auto extension = xInputExtension(connection);
    if (!extension) return nullptr;
    std::unique_ptr<KeyWatch> watch(new KeyWatch(connection, *extension, client, std::move(beforeWaiting)));
    watch->hearKeys(true);
    sync(connection.get());
    return watch;
}

void KeyWatch::add(FileDescriptor line, std::uint32_t resource) {
    hearKeys(true);
    say(line, guardQuestion);
    filters_.push_back({std::move(line), resource, {}, {}});
}

std::vector<int> KeyWatch::descriptors() const {
    std::vector<int> all(filters_.size());
    std::transform(filters_.begin(), filters_.end(), all.begin(), [](const Filter& one) { return one.line.get(); });
    return all;
}

std::optional<KeyWatch::Time> KeyWatch::due() const {
    std::optional<Time> first;
    for (const Filter& filter : filters_) {
        std::optional<Time> due;
        if (filter.pressed) due = *filter.pressed + beforeQuestion;
        if (filter.asked) due = *filter.asked + forAnswer;
        if (due && (!first || *due < *first)) first = due;
    }
    return first;
}

void KeyWatch::attend() {
    if (keyWasPressed()) {
        for (Filter& filter : filters_) {
            if (!filter.pressed) filter.pressed = Clock::now();
        }
    }
    for (Filter& filter : filters_) attend(filter);
    std::erase_if(filters_, [](const Filter& filter) { return !filter.line.isOpen(); });
    // One press is enough until the question is asked, and the server has less to do for those that follow.
    const bool enough = !filters_.empty() && std::all_of(filters_.begin(), filters_.end(), [](const Filter& filter) {
        return filter.pressed.has_value();
    });
    if (enough) hearKeys(false);
}

void KeyWatch::hearKeys(bool hear) {
    if (hear == hears_) return;
    hears_ = hear;
    RawKeysMask keys;
    if (hear) keys.mask = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS;
    xcb_input_xi_select_events(connection_.get(), connection_.root(), 1, &keys.header);
    xcb_flush(connection_.get());
}

// Read the line before the clock: an answer that came while this process did not run still counts.
void KeyWatch::attend(Filter& filter) {
    listen(filter);
    if (!filter.line.isOpen()) return;
    const Time now = Clock::now();
    if (filter.asked && now >= *filter.asked + forAnswer) {
        // After a pause of the whole computer this process may be the first that runs again.
        const bool pausedMyself = now > *filter.asked + forAnswer + forAnswer / 4;
        if (pausedMyself || serverWasBusy()) {
            filter.asked = Clock::now();
        } else {
            disconnect(filter, keyboardOfASilentFilter);
        }
    } else if (!filter.asked && filter.pressed && now >= *filter.pressed + beforeQuestion) {
        // The answer does not cover keys that are pressed from here on.
        hearKeys(true);
        filter.pressed.reset();
        filter.asked = now;
        say(filter.line, guardQuestion);
    }
}

void KeyWatch::listen(Filter& filter) {
    std::array<char, 16> bytes{};
    const ssize_t count = recv(filter.line.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) {
        filter.line.close();
    } else if (count > 0) {
        filter.asked.reset();
    }
}

void KeyWatch::freeKeyboard() {
    for (Filter& filter : filters_) disconnect(filter, keyboardOfAStoppedClient);
    filters_.clear();
}

// The other guard may have done it already, and the server gives the numbers of a client that is gone to the next one.
void KeyWatch::disconnect(Filter& filter, char reason) {
    beforeWaiting_();
    xcb_grab_server(connection_.get());
    const auto owner = X11Windows(connection_).owner(filter.resource);
    if (owner == client_ || owner == 0) {
        say(filter.line, reason);
        xcb_kill_client(connection_.get(), filter.resource);
    }
    xcb_ungrab_server(connection_.get());
    sync(connection_.get());
    filter.line.close();
}

bool KeyWatch::keyWasPressed() {
    bool pressed = false;
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        if (event->response_type != XCB_GE_GENERIC) continue;
        const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(*event);
        pressed = pressed || (generic.extension == extension_ && generic.event_type == XCB_INPUT_RAW_KEY_PRESS);
    }
    return pressed;
}

// While another client grabs the server, the filter may be waiting too.
bool KeyWatch::serverWasBusy() {
    beforeWaiting_();
    const auto before = Clock::now();
    sync(connection_.get());
    return Clock::now() - before > forAnswer / 4;
}

}  // namespace vantrel::linuxdesktop
