#pragma once

#include <cstdint>
#include <vector>

namespace vantrel::contracts {

/// A computer under test that has a keyboard, which types into another application's window. Test thread.
class KeyboardHost {
  public:
    virtual ~KeyboardHost() = default;

    /// Presses and releases the key with that macOS key code. The modifier keys of these CGEventFlags are held from
    /// before to after it. The first call opens the window and gives it the keyboard. Returns without waiting for the
    /// key to pass a tap.
    virtual void pressKey(std::int64_t macKeyCode, std::uint64_t flags) = 0;

    /// The key codes of the presses that the window has received so far, in order, without modifier keys.
    virtual std::vector<std::int64_t> keysReceived() = 0;
};

}  // namespace vantrel::contracts
