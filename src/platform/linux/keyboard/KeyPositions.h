#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

namespace vantrel::linuxdesktop {

/// The macOS virtual key code of the key at the position that an X keycode names. Empty for a position that sends no
/// key events on a Mac. These are positions, not letters, so the layout does not matter. X keycodes are those of evdev
/// keyboards.
std::optional<std::int64_t> macKeyCode(xcb_keycode_t position);

/// The CGEventFlags bit of a modifier key, by its macOS key code. Zero for other keys.
std::uint64_t modifierFlag(std::int64_t keyCode);

/// Whether the key only changes flags (a modifier or Caps Lock).
bool changesFlags(std::int64_t keyCode);

/// The modifiers' CGEventFlags.
constexpr std::uint64_t shiftFlag = 0x20000;
constexpr std::uint64_t controlFlag = 0x40000;
constexpr std::uint64_t optionFlag = 0x80000;
constexpr std::uint64_t commandFlag = 0x100000;

}  // namespace vantrel::linuxdesktop
