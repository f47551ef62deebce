#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace vantrel::linuxdesktop {

/// Which bits of an X modifier state stand for which CGEventFlags: Shift and Control as they are, Super for Command,
/// Alt and the third-level key for Option. The keymap says where Super and Alt are. If it has neither, their usual
/// places count, even if other keys use these.
class KeyModifiers {
  public:
    /// Asks the server for the current keymap. Without an answer, the usual places.
    static KeyModifiers read(xcb_connection_t* connection);

    std::uint64_t flags(std::uint32_t state) const;

  private:
    std::uint32_t command_ = XCB_MOD_MASK_4;
    std::uint32_t option_ = XCB_MOD_MASK_1;
};

}  // namespace vantrel::linuxdesktop
