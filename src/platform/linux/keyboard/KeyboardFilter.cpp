#include "platform/linux/keyboard/KeyboardFilter.h"

#include <array>
#include <utility>

#include "platform/linux/keyboard/KeyPositions.h"
#include "platform/linux/x11/XInputExtension.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr std::uint32_t anyKeycode = 0;
constexpr std::uint32_t anyModifier = 0x80000000U;
// Window managers renew their own grabs within this time.
constexpr std::chrono::milliseconds regrabDelay{60};

struct HierarchyMask {
    xcb_input_event_mask_t header{XCB_INPUT_DEVICE_ALL, 1};
    std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_HIERARCHY;
};

}  // namespace

std::unique_ptr<KeyboardFilter> KeyboardFilter::open() {
    auto connection = X11Connection::open();
    if (!connection) return nullptr;
    const auto extension = xInputExtension(*connection);
    if (!extension) return nullptr;
    return std::unique_ptr<KeyboardFilter>(new KeyboardFilter(std::move(connection), *extension));
}

KeyboardFilter::KeyboardFilter(std::unique_ptr<X11Connection> connection, std::uint8_t extension)
    : connection_(std::move(connection)),
      extension_(extension),
      resource_(xcb_generate_id(connection_->get())),
      modifiers_(KeyModifiers::read(connection_->get())) {
    // A graphics context is the resource that costs the server least.
    xcb_create_gc(connection_->get(), resource_, connection_->root(), 0, nullptr);
    const HierarchyMask hierarchy;
    xcb_input_xi_select_events(connection_->get(), connection_->root(), 1, &hierarchy.header);
    xcb_flush(connection_->get());
}

KeyboardFilter::~KeyboardFilter() = default;

// A grab of "all master devices" loses every key that is passed on. So each real master keyboard is grabbed by its own
// number.
std::vector<std::uint16_t> KeyboardFilter::masterKeyboards() {
    std::vector<std::uint16_t> found;
    const auto cookie = xcb_input_xi_query_device(connection_->get(), XCB_INPUT_DEVICE_ALL_MASTER);
    const X11Reply<xcb_input_xi_query_device_reply_t> reply(
        xcb_input_xi_query_device_reply(connection_->get(), cookie, nullptr));
    if (!reply) return found;
    auto each = xcb_input_xi_query_device_infos_iterator(reply.get());
    for (; each.rem > 0; xcb_input_xi_device_info_next(&each)) {
        if (each.data->type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD) found.push_back(each.data->deviceid);
    }
    return found;
}

bool KeyboardFilter::grab(std::uint16_t keyboard) {
    const std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
    const auto cookie = xcb_input_xi_passive_grab_device(
        connection_->get(), XCB_CURRENT_TIME, connection_->root(), XCB_CURSOR_NONE, anyKeycode, keyboard, 1, 1,
        XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_SYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
        XCB_INPUT_GRAB_OWNER_NO_OWNER, &events, &anyModifier);
    const X11Reply<xcb_input_xi_passive_grab_device_reply_t> reply(
        xcb_input_xi_passive_grab_device_reply(connection_->get(), cookie, nullptr));
    // The reply lists the modifiers that failed.
    return reply && reply->num_modifiers == 0;
}

// Grabbing again puts the filter's grab above the others, without a moment between two grabs.
bool KeyboardFilter::grab() {
    keyboards_ = masterKeyboards();
    bool granted = !keyboards_.empty();
    for (const std::uint16_t keyboard : keyboards_) granted = grab(keyboard) && granted;
    return granted;
}

bool KeyboardFilter::answer(const Decide& decide) {
    answerQueued(decide);
    if (regrabAt_ && Clock::now() >= *regrabAt_) {
        grabAgainWhenDue();
        // XCB has read events while it waited for replies. The descriptor will not become readable for them.
        answerQueued(decide);
    }
    return connection_->isAlive();
}

bool KeyboardFilter::answerQueued(const Decide& decide) {
    bool any = false;
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
        take(*event, decide);
        any = true;
    }
    return any;
}

void KeyboardFilter::take(const xcb_generic_event_t& event, const Decide& decide) {
    constexpr std::uint8_t sentByClient = 0x80;
    const std::uint8_t type = event.response_type & ~sentByClient;
    if (type == XCB_MAPPING_NOTIFY) {
        mappingChanged();
        return;
    }
    // Other clients cannot send a generic event that looks like the server's.
    if (event.response_type != XCB_GE_GENERIC) return;
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (generic.extension != extension_) return;
    if (generic.event_type == XCB_INPUT_HIERARCHY) {
        keyboardsChanged(reinterpret_cast<const xcb_input_hierarchy_event_t&>(event));
        return;
    }
    if (generic.event_type != XCB_INPUT_KEY_PRESS && generic.event_type != XCB_INPUT_KEY_RELEASE) return;
    const auto& key = reinterpret_cast<const xcb_input_key_press_event_t&>(event);
    const auto position = static_cast<xcb_keycode_t>(key.detail);
    const bool pressed = generic.event_type == XCB_INPUT_KEY_PRESS;
    const bool swallow = pressed ? decidePress(position, key.mods.effective, decide) : swallowed_[position];
    swallowed_[position] = pressed && swallow;

    // After a swallowed key, the grab lasts until that key is released. The release ends it and nothing waits: an
    // answer now would count for the next key.
    const auto holding = holding_.find(key.deviceid);
    if (!pressed && holding != holding_.end() && holding->second == position) {
        holding_.erase(holding);
        return;
    }
    if (!swallow) {
        holding_.erase(key.deviceid);
    } else if (pressed) {
        holding_.try_emplace(key.deviceid, position);
    }
    xcb_input_xi_allow_events(connection_->get(), key.time, key.deviceid,
                              swallow ? XCB_INPUT_EVENT_MODE_SYNC_DEVICE : XCB_INPUT_EVENT_MODE_REPLAY_DEVICE, 0,
                              connection_->root());
    xcb_flush(connection_->get());
}

bool KeyboardFilter::decidePress(xcb_keycode_t position, std::uint32_t state, const Decide& decide) {
    const auto keyCode = macKeyCode(position);
    if (!keyCode) return false;
    KeyEvent event;
    event.keyCode = *keyCode;
    event.flags = modifiers_.flags(state);
    if (changesFlags(*keyCode)) {
        event.type = KeyEventType::flagsChanged;
        event.flags |= modifierFlag(*keyCode);
    }
    return decide(event);
}

// There may be a new master keyboard that is not filtered yet. It may have the number of one that is gone.
void KeyboardFilter::keyboardsChanged(const xcb_input_hierarchy_event_t& event) {
    auto each = xcb_input_hierarchy_infos_iterator(&event);
    for (; each.rem > 0; xcb_input_hierarchy_info_next(&each)) {
        if ((each.data->flags & XCB_INPUT_HIERARCHY_MASK_MASTER_REMOVED) != 0) holding_.erase(each.data->deviceid);
    }
    regrabTwice_ = regrabAt_.has_value();
    regrabAt_ = Clock::now();
}

void KeyboardFilter::mappingChanged() {
    if (regrabAt_) {
        regrabTwice_ = true;
        return;
    }
    regrabAt_ = Clock::now() + regrabDelay;
}

// Notices that arrive during the wait are answered by one more grab. So none is answered too early, and a storm of them
// does not delay the grab for ever.
void KeyboardFilter::grabAgainWhenDue() {
    modifiers_ = KeyModifiers::read(connection_->get());
    grab();
    regrabAt_.reset();
    if (std::exchange(regrabTwice_, false)) regrabAt_ = Clock::now() + regrabDelay;
}

void KeyboardFilter::release(const Decide& decide) {
    xcb_connection_t* connection = connection_->get();
    for (const std::uint16_t keyboard : keyboards_) {
        xcb_input_xi_passive_ungrab_device(connection, connection_->root(), anyKeycode, keyboard, 1,
                                           XCB_INPUT_GRAB_TYPE_KEYCODE, &anyModifier);
    }
    keyboards_.clear();
    // The server stops reading from a connection that is being closed, so it must have read every answer before.
    do {
        const X11Reply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    } while (answerQueued(decide));
}

}  // namespace vantrel::linuxdesktop
