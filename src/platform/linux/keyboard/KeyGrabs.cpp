#include "platform/linux/keyboard/KeyGrabs.h"

#include <xcb/xinput.h>

#include <algorithm>

namespace vantrel::linuxdesktop {

namespace {

constexpr std::uint32_t anyKeycode = 0;
constexpr std::uint32_t anyModifier = 0x80000000U;

}  // namespace

// A grab of "all master devices" loses every key that is passed on. So each real master keyboard is grabbed by its own
// number.
std::vector<std::uint16_t> KeyGrabs::masterKeyboards() {
    std::vector<std::uint16_t> found;
    const auto cookie = xcb_input_xi_query_device(connection_.get(), XCB_INPUT_DEVICE_ALL_MASTER);
    const X11Reply<xcb_input_xi_query_device_reply_t> reply(
        xcb_input_xi_query_device_reply(connection_.get(), cookie, nullptr));
    if (!reply) return found;
    auto each = xcb_input_xi_query_device_infos_iterator(reply.get());
    for (; each.rem > 0; xcb_input_xi_device_info_next(&each)) {
        if (each.data->type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD) found.push_back(each.data->deviceid);
    }
    return found;
}

bool KeyGrabs::grab(std::uint16_t keyboard, std::uint32_t position) {
    const std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
    const auto cookie = xcb_input_xi_passive_grab_device(
        connection_.get(), XCB_CURRENT_TIME, connection_.root(), XCB_CURSOR_NONE, position, keyboard, 1, 1,
        XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_SYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
        XCB_INPUT_GRAB_OWNER_NO_OWNER, &events, &anyModifier);
    const X11Reply<xcb_input_xi_passive_grab_device_reply_t> reply(
        xcb_input_xi_passive_grab_device_reply(connection_.get(), cookie, nullptr));
    // The reply lists the modifiers that failed.
    return reply && reply->num_modifiers == 0;
}

void KeyGrabs::ungrab(std::uint16_t keyboard, std::uint32_t position) {
    xcb_input_xi_passive_ungrab_device(connection_.get(), connection_.root(), position, keyboard, 1,
                                       XCB_INPUT_GRAB_TYPE_KEYCODE, &anyModifier);
}

bool KeyGrabs::grab() {
    keyboards_ = masterKeyboards();
    bool granted = !keyboards_.empty();
    for (const std::uint16_t keyboard : keyboards_) granted = grab(keyboard, anyKeycode) && granted;
    if (granted) return true;
    for (const std::uint16_t keyboard : keyboards_) ungrab(keyboard, anyKeycode);
    if (keyboards_.empty() || anotherClientGrabsEveryKey()) return false;
    core_ = grabByCore();
    return core_;
}

// The kind of grab stays: a key that is swallowed at this moment is answered by the kind that holds it. What is refused
// now, such as a keyboard that has just gone, leaves the others as they are.
void KeyGrabs::grabAgain() {
    if (core_) {
        grabByCore();
        return;
    }
    keyboards_ = masterKeyboards();
    for (const std::uint16_t keyboard : keyboards_) grab(keyboard, anyKeycode);
}

// Whoever grabs every key grabs the first one too, which no keyboard has and no desktop binds. (The last one is bound.)
bool KeyGrabs::anotherClientGrabsEveryKey() {
    const std::uint32_t unused = xcb_get_setup(connection_.get())->min_keycode;
    return !std::all_of(keyboards_.begin(), keyboards_.end(), [this, unused](std::uint16_t keyboard) {
        const bool granted = grab(keyboard, unused);
        if (granted) ungrab(keyboard, unused);
        return granted;
    });
}

bool KeyGrabs::grabByCore() {
    const auto cookie = xcb_grab_key_checked(connection_.get(), 0, connection_.root(), XCB_MOD_MASK_ANY, XCB_GRAB_ANY,
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC);
    const X11Reply<xcb_generic_error_t> refusal(xcb_request_check(connection_.get(), cookie));
    return !refusal && connection_.isAlive();
}

std::optional<GrabbedKey> KeyGrabs::key(const xcb_generic_event_t& event) const {
    if (core_) {
        // One that a client has sent has another bit set.
        if (event.response_type != XCB_KEY_PRESS && event.response_type != XCB_KEY_RELEASE) return std::nullopt;
        const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
        return GrabbedKey{0, key.detail, event.response_type == XCB_KEY_PRESS, key.state, key.time};
    }
    // Other clients cannot send a generic event that looks like the server's.
    if (event.response_type != XCB_GE_GENERIC) return std::nullopt;
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (generic.extension != extension_) return std::nullopt;
    if (generic.event_type != XCB_INPUT_KEY_PRESS && generic.event_type != XCB_INPUT_KEY_RELEASE) return std::nullopt;
    const auto& key = reinterpret_cast<const xcb_input_key_press_event_t&>(event);
    return GrabbedKey{key.deviceid, static_cast<xcb_keycode_t>(key.detail), generic.event_type == XCB_INPUT_KEY_PRESS,
                      key.mods.effective, key.time};
}

void KeyGrabs::swallow(const GrabbedKey& key) {
    allow(key, XCB_INPUT_EVENT_MODE_SYNC_DEVICE, XCB_ALLOW_SYNC_KEYBOARD);
}

void KeyGrabs::pass(const GrabbedKey& key) {
    allow(key, XCB_INPUT_EVENT_MODE_REPLAY_DEVICE, XCB_ALLOW_REPLAY_KEYBOARD);
}

void KeyGrabs::allow(const GrabbedKey& key, std::uint8_t mode, std::uint8_t coreMode) {
    if (core_) {
        xcb_allow_events(connection_.get(), coreMode, key.time);
    } else {
        xcb_input_xi_allow_events(connection_.get(), key.time, key.keyboard, mode, 0, connection_.root());
    }
    xcb_flush(connection_.get());
}

void KeyGrabs::release() {
    if (core_) xcb_ungrab_key(connection_.get(), XCB_GRAB_ANY, connection_.root(), XCB_MOD_MASK_ANY);
    for (const std::uint16_t keyboard : keyboards_) ungrab(keyboard, anyKeycode);
    keyboards_.clear();
}

}  // namespace vantrel::linuxdesktop
