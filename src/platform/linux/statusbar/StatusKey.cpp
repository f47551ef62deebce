#include "platform/linux/statusbar/StatusKey.h"

#include <xcb/xinput.h>

#include <QObject>
#include <utility>

#include "platform/linux/keyboard/KeyPositions.h"
#include "platform/linux/x11/XInputExtension.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr std::int64_t macKeyF8 = 100;

struct RawKeyMask {
    xcb_input_event_mask_t header{XCB_INPUT_DEVICE_ALL_MASTER, 1};
    std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
};

}  // namespace

std::unique_ptr<StatusKey> StatusKey::listen(Block onPress) {
    auto connection = X11Connection::open();
    if (!connection) return nullptr;
    const auto extension = xInputExtension(*connection);
    if (!extension) return nullptr;
    return std::unique_ptr<StatusKey>(new StatusKey(std::move(connection), *extension, std::move(onPress)));
}

StatusKey::StatusKey(std::unique_ptr<X11Connection> connection, std::uint8_t extension, Block onPress)
    : connection_(std::move(connection)),
      extension_(extension),
      onPress_(std::move(onPress)),
      notifier_(xcb_get_file_descriptor(connection_->get()), QSocketNotifier::Read) {
    const RawKeyMask keys;
    xcb_input_xi_select_events(connection_->get(), connection_->root(), 1, &keys.header);
    xcb_flush(connection_->get());
    QObject::connect(&notifier_, &QSocketNotifier::activated, [this] { readEvents(); });
}

// The block comes last, because it may destroy this object.
void StatusKey::readEvents() {
    bool pressed = false;
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
        if (event->response_type != XCB_GE_GENERIC) continue;
        const auto& key = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(*event);
        const auto keyCode = macKeyCode(static_cast<xcb_keycode_t>(key.detail));
        if (key.extension == extension_ && keyCode) pressed = take(*keyCode, key.event_type) || pressed;
    }
    if (!connection_->isAlive()) notifier_.setEnabled(false);
    if (!pressed) return;
    const Block onPress = onPress_;
    onPress();
}

// The server is not asked for the modifiers, because they may have changed since the press.
bool StatusKey::take(std::int64_t keyCode, std::uint16_t type) {
    const bool down = type == XCB_INPUT_RAW_KEY_PRESS;
    if (const std::uint64_t flag = modifierFlag(keyCode)) {
        held_ = down ? held_ | flag : held_ & ~flag;
        return false;
    }
    if (keyCode != macKeyF8) return false;
    if (!down) return std::exchange(isDown_, false);
    isDown_ = isDown_ || held_ == controlFlag;
    return false;
}

}  // namespace vantrel::linuxdesktop
