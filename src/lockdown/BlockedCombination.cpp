#include "lockdown/BlockedCombination.h"

#include <array>
#include <cstdint>
#include <utility>

namespace vantrel {
namespace {

constexpr std::uint64_t shiftFlag = 0x20000;
constexpr std::uint64_t controlFlag = 0x40000;
constexpr std::uint64_t commandFlag = 0x100000;

enum Key : std::int64_t {
    keyD = 2,
    keyF = 3,
    keyH = 4,
    keyQ = 12,
    keyW = 13,
    keyT = 17,
    keyL = 37,
    keyN = 45,
    keyM = 46,
    keyTab = 48,
    keySpace = 49,
    keyLeftArrow = 123,
    keyRightArrow = 124,
    keyDownArrow = 125,
    keyUpArrow = 126
};

/// The row of digits. The codes of 5 and 6 are not in order, nor are those of 7 to 9.
constexpr std::array<std::pair<std::int64_t, std::string_view>, 9> digits{{{18, "Cmd+1"},
                                                                           {19, "Cmd+2"},
                                                                           {20, "Cmd+3"},
                                                                           {21, "Cmd+4"},
                                                                           {23, "Cmd+5"},
                                                                           {22, "Cmd+6"},
                                                                           {26, "Cmd+7"},
                                                                           {28, "Cmd+8"},
                                                                           {25, "Cmd+9"}}};

constexpr std::string_view letterWithCommand(std::int64_t keyCode) {
    switch (keyCode) {
        case keyD:
            return "Cmd+D";
        case keyH:
            return "Cmd+H";
        case keyQ:
            return "Cmd+Q";
        case keyW:
            return "Cmd+W";
        case keyT:
            return "Cmd+T";
        case keyL:
            return "Cmd+L";
        case keyN:
            return "Cmd+N";
        case keyM:
            return "Cmd+M";
        default:
            return {};
    }
}

constexpr std::string_view digitWithCommand(std::int64_t keyCode) {
    for (const auto& [code, name] : digits) {
        if (code == keyCode) return name;
    }
    return {};
}

constexpr std::string_view screenshot(std::int64_t keyCode) {
    switch (keyCode) {
        case 20:
            return "Cmd+Shift+3";
        case 21:
            return "Cmd+Shift+4";
        case 23:
            return "Cmd+Shift+5";
        default:
            return {};
    }
}

constexpr std::string_view withCommandAndControl(std::int64_t keyCode, bool shift) {
    switch (keyCode) {
        case keyDownArrow:
            return "Ctrl+Down";
        case keyUpArrow:
            return "Ctrl+Up";
        case keyF:
            return "Cmd+Ctrl+F";
        case keyTab:
            return shift ? "Ctrl+Shift+Tab" : "Ctrl+Tab";
        default:
            return {};
    }
}

/// The order matters: digits come before the screenshots, whose names are therefore never returned, and Tab comes
/// before Control is checked.
constexpr std::string_view withCommand(std::int64_t keyCode, bool shift, bool control) {
    if (const auto name = letterWithCommand(keyCode); !name.empty()) return name;
    if (keyCode == keyTab) return shift ? "Cmd+Shift+Tab" : "Cmd+Tab";
    if (const auto name = digitWithCommand(keyCode); !name.empty()) return name;
    if (keyCode == keyLeftArrow || keyCode == keyRightArrow) return "Cmd+Arrow";
    if (keyCode == keySpace) return "Cmd+Space";
    if (shift) {
        if (const auto name = screenshot(keyCode); !name.empty()) return name;
    }
    return control ? withCommandAndControl(keyCode, shift) : std::string_view();
}

constexpr std::string_view withControl(std::int64_t keyCode, bool shift) {
    switch (keyCode) {
        case keyDownArrow:
            return "Ctrl+Down";
        case keyUpArrow:
            return "Ctrl+Up";
        case keyLeftArrow:
        case keyRightArrow:
            return "Ctrl+Arrow";
        case keyTab:
            return shift ? "Ctrl+Shift+Tab" : "Ctrl+Tab";
        default:
            return {};
    }
}

}  // namespace

std::string_view blockedCombination(const KeyEvent& event) noexcept {
    if (event.type != KeyEventType::keyDown) return {};
    const bool shift = (event.flags & shiftFlag) != 0;
    const bool control = (event.flags & controlFlag) != 0;
    if ((event.flags & commandFlag) != 0) return withCommand(event.keyCode, shift, control);
    return control ? withControl(event.keyCode, shift) : std::string_view();
}

}  // namespace vantrel
