#include "platform/linux/keyboard/KeyPositions.h"

#include <linux/input-event-codes.h>

#include <array>

namespace vantrel::linuxdesktop {

namespace {

struct Position {
    std::uint8_t evdev;
    std::int8_t mac;
};

// The key left of "1" is that of ANSI keyboards. The key beside the left Shift exists on ISO keyboards only. The three
// keys above the arrow block are where an extended Apple keyboard has F13 to F15.
constexpr std::array positions{
    Position{KEY_A, 0},
    Position{KEY_S, 1},
    Position{KEY_D, 2},
    Position{KEY_F, 3},
    Position{KEY_H, 4},
    Position{KEY_G, 5},
    Position{KEY_Z, 6},
    Position{KEY_X, 7},
    Position{KEY_C, 8},
    Position{KEY_V, 9},
    Position{KEY_102ND, 10},
    Position{KEY_B, 11},
    Position{KEY_Q, 12},
    Position{KEY_W, 13},
    Position{KEY_E, 14},
    Position{KEY_R, 15},
    Position{KEY_Y, 16},
    Position{KEY_T, 17},
    Position{KEY_1, 18},
    Position{KEY_2, 19},
    Position{KEY_3, 20},
    Position{KEY_4, 21},
    Position{KEY_6, 22},
    Position{KEY_5, 23},
    Position{KEY_EQUAL, 24},
    Position{KEY_9, 25},
    Position{KEY_7, 26},
    Position{KEY_MINUS, 27},
    Position{KEY_8, 28},
    Position{KEY_0, 29},
    Position{KEY_RIGHTBRACE, 30},
    Position{KEY_O, 31},
    Position{KEY_U, 32},
    Position{KEY_LEFTBRACE, 33},
    Position{KEY_I, 34},
    Position{KEY_P, 35},
    Position{KEY_ENTER, 36},
    Position{KEY_L, 37},
    Position{KEY_J, 38},
    Position{KEY_APOSTROPHE, 39},
    Position{KEY_K, 40},
    Position{KEY_SEMICOLON, 41},
    Position{KEY_BACKSLASH, 42},
    Position{KEY_COMMA, 43},
    Position{KEY_SLASH, 44},
    Position{KEY_N, 45},
    Position{KEY_M, 46},
    Position{KEY_DOT, 47},
    Position{KEY_TAB, 48},
    Position{KEY_SPACE, 49},
    Position{KEY_GRAVE, 50},
    Position{KEY_BACKSPACE, 51},
    Position{KEY_ESC, 53},
    Position{KEY_RIGHTMETA, 54},
    Position{KEY_LEFTMETA, 55},
    Position{KEY_LEFTSHIFT, 56},
    Position{KEY_CAPSLOCK, 57},
    Position{KEY_LEFTALT, 58},
    Position{KEY_LEFTCTRL, 59},
    Position{KEY_RIGHTSHIFT, 60},
    Position{KEY_RIGHTALT, 61},
    Position{KEY_RIGHTCTRL, 62},
    Position{KEY_F17, 64},
    Position{KEY_KPDOT, 65},
    Position{KEY_KPASTERISK, 67},
    Position{KEY_KPPLUS, 69},
    Position{KEY_NUMLOCK, 71},
    Position{KEY_KPSLASH, 75},
    Position{KEY_KPENTER, 76},
    Position{KEY_KPMINUS, 78},
    Position{KEY_F18, 79},
    Position{KEY_F19, 80},
    Position{KEY_KPEQUAL, 81},
    Position{KEY_KP0, 82},
    Position{KEY_KP1, 83},
    Position{KEY_KP2, 84},
    Position{KEY_KP3, 85},
    Position{KEY_KP4, 86},
    Position{KEY_KP5, 87},
    Position{KEY_KP6, 88},
    Position{KEY_KP7, 89},
    Position{KEY_F20, 90},
    Position{KEY_KP8, 91},
    Position{KEY_KP9, 92},
    Position{KEY_YEN, 93},
    Position{KEY_RO, 94},
    Position{KEY_KPCOMMA, 95},
    Position{KEY_F5, 96},
    Position{KEY_F6, 97},
    Position{KEY_F7, 98},
    Position{KEY_F3, 99},
    Position{KEY_F8, 100},
    Position{KEY_F9, 101},
    Position{KEY_HANJA, 102},
    Position{KEY_F11, 103},
    Position{KEY_HANGEUL, 104},
    Position{KEY_F13, 105},
    Position{KEY_SYSRQ, 105},
    Position{KEY_F16, 106},
    Position{KEY_F14, 107},
    Position{KEY_SCROLLLOCK, 107},
    Position{KEY_F10, 109},
    Position{KEY_COMPOSE, 110},
    Position{KEY_F12, 111},
    Position{KEY_F15, 113},
    Position{KEY_PAUSE, 113},
    Position{KEY_INSERT, 114},
    Position{KEY_HOME, 115},
    Position{KEY_PAGEUP, 116},
    Position{KEY_DELETE, 117},
    Position{KEY_F4, 118},
    Position{KEY_END, 119},
    Position{KEY_F2, 120},
    Position{KEY_PAGEDOWN, 121},
    Position{KEY_F1, 122},
    Position{KEY_LEFT, 123},
    Position{KEY_RIGHT, 124},
    Position{KEY_DOWN, 125},
    Position{KEY_UP, 126},
};

constexpr std::int8_t none = -1;

// An X keycode is evdev's code plus eight.
constexpr std::array<std::int8_t, 256> byKeycode = [] {
    constexpr int offset = 8;
    std::array<std::int8_t, 256> table{};
    for (auto& entry : table) entry = none;
    for (const Position& position : positions) table[position.evdev + offset] = position.mac;
    return table;
}();

}  // namespace

std::optional<std::int64_t> macKeyCode(xcb_keycode_t position) {
    const std::int8_t code = byKeycode[position];
    if (code == none) return std::nullopt;
    return code;
}

std::uint64_t modifierFlag(std::int64_t keyCode) {
    switch (keyCode) {
        case 54:
        case 55:
            return commandFlag;
        case 56:
        case 60:
            return shiftFlag;
        case 58:
        case 61:
            return optionFlag;
        case 59:
        case 62:
            return controlFlag;
        default:
            return 0;
    }
}

bool changesFlags(std::int64_t keyCode) {
    constexpr std::int64_t capsLock = 57;
    return keyCode == capsLock || modifierFlag(keyCode) != 0;
}

}  // namespace vantrel::linuxdesktop
