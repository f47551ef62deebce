#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace vantrel::linuxdesktop {

/// Which bits of an X modifier state stand for which CGEventFlags: Shift and Control as they are, Super for Command,
/// Alt and the key of the third level for Option. The keymap says where Super and Alt are; where it has
/// none of them their usual places count, which other keys may have taken over.
class KeyModifiers {
  public:
    /// Asks the server for the keymap of now; without an answer the usual places.
    static KeyModifiers read(xcb_connection_t* connection);

    std::uint64_t flags(std::uint32_t state) const;

  private:
    std::uint32_t command_ = XCB_MOD_MASK_4;
    std::uint32_t option_ = XCB_MOD_MASK_1;
};

}  // namespace vantrel::linuxdesktop
