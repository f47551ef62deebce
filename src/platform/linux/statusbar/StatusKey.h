#pragma once

#include <QSocketNotifier>
#include <cstdint>
#include <memory>

#include "platform/linux/x11/X11Connection.h"
#include "platform/threads/Block.h"

namespace vantrel::linuxdesktop {

/// Control-F8, which leads to the status items on a Mac. Heard from the server without a grab, so also beside the
/// keyboard tap, which passes it. The window with the keyboard gets it too. Main thread.
class StatusKey {
  public:
    /// The block runs in an event when the key is released: while it is down, its grab keeps a menu from getting the
    /// keyboard. Null without XInput 2.1.
    static std::unique_ptr<StatusKey> listen(Block onPress);

  private:
    StatusKey(std::unique_ptr<X11Connection> connection, std::uint8_t extension, Block onPress);

    void readEvents();
    bool take(std::int64_t keyCode, std::uint16_t type);

    const std::unique_ptr<X11Connection> connection_;
    const std::uint8_t extension_;
    const Block onPress_;
    std::uint64_t held_ = 0;
    bool isDown_ = false;
    QSocketNotifier notifier_;
};

}  // namespace vantrel::linuxdesktop
