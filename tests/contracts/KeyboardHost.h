#pragma once

#include <cstdint>
#include <vector>

#include "platform/KeyboardTap.h"

namespace vantrel::contracts {

/// A computer on trial that has a keyboard. Test thread.
class KeyboardHost {
  public:
    virtual ~KeyboardHost() = default;

    virtual KeyboardTaps& keyboardTaps() = 0;

    /// Presses and releases the key of that macOS key code, with the modifier keys of these CGEventFlags held. The
    /// focus is on a window of another application.
    virtual void pressKey(std::int64_t macKeyCode, std::uint64_t flags) = 0;

    /// The key codes of the presses that this window has received so far, without modifier keys.
    virtual std::vector<std::int64_t> keysReceived() = 0;
};

}  // namespace vantrel::contracts
