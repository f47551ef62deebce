#include "platform/linux/keyboard/KeyboardFilter.h"

#include <array>
#include <utility>

#include "platform/linux/keyboard/KeyPositions.h"
#include "platform/linux/x11/XInputExtension.h"

namespace vantrel::linuxdesktop {

namespace {

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
      grabs_(*connection_, extension),
      modifiers_(KeyModifiers::read(connection_->get())) {
    // A graphics context is the resource that costs the server least.
    xcb_create_gc(connection_->get(), resource_, connection_->root(), 0, nullptr);
    const HierarchyMask hierarchy;
    xcb_input_xi_select_events(connection_->get(), connection_->root(), 1, &hierarchy.header);
    xcb_flush(connection_->get());
}

KeyboardFilter::~KeyboardFilter() = default;

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
    if (const auto key = grabs_.key(event)) {
        answer(*key, decide);
    } else if ((event.response_type & ~sentByClient) == XCB_MAPPING_NOTIFY) {
        mappingChanged();
    } else if (event.response_type == XCB_GE_GENERIC) {
        const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
        if (generic.extension != extension_ || generic.event_type != XCB_INPUT_HIERARCHY) return;
        keyboardsChanged(reinterpret_cast<const xcb_input_hierarchy_event_t&>(event));
    }
}

void KeyboardFilter::answer(const GrabbedKey& key, const Decide& decide) {
    const bool swallow = key.pressed ? decidePress(key.position, key.state, decide) : swallowed_[key.position];
    swallowed_[key.position] = key.pressed && swallow;

    // After a swallowed key, the grab lasts until that key is released. The release ends it and nothing waits: an
    // answer now would count for the next key.
    const auto holding = holding_.find(key.keyboard);
    if (!key.pressed && holding != holding_.end() && holding->second == key.position) {
        holding_.erase(holding);
        return;
    }
    if (swallow) {
        if (key.pressed) holding_.try_emplace(key.keyboard, key.position);
        grabs_.swallow(key);
    } else {
        holding_.erase(key.keyboard);
        grabs_.pass(key);
    }
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
    grabs_.grabAgain();
    regrabAt_.reset();
    if (std::exchange(regrabTwice_, false)) regrabAt_ = Clock::now() + regrabDelay;
}

void KeyboardFilter::release(const Decide& decide) {
    xcb_connection_t* connection = connection_->get();
    grabs_.release();
    // The server stops reading from a connection that is being closed, so it must have read every answer before.
    do {
        const X11Reply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    } while (answerQueued(decide));
}

}  // namespace vantrel::linuxdesktop
