#include "platform/linux/keyboard/KeyModifiers.h"

#include "platform/linux/keyboard/KeyPositions.h"
#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

namespace {

// Keysyms of <X11/keysymdef.h>.
bool isSuper(xcb_keysym_t symbol) {
    return symbol == 0xffeb || symbol == 0xffec;
}

bool isOption(xcb_keysym_t symbol) {
    constexpr xcb_keysym_t leftAlt = 0xffe9;
    constexpr xcb_keysym_t rightAlt = 0xffea;
    constexpr xcb_keysym_t thirdLevel = 0xfe03;
    return symbol == leftAlt || symbol == rightAlt || symbol == thirdLevel;
}

}  // namespace

KeyModifiers KeyModifiers::read(xcb_connection_t* connection) {
    KeyModifiers modifiers;
    const xcb_setup_t* setup = xcb_get_setup(connection);
    const xcb_keycode_t first = setup->min_keycode;
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - first + 1);
    const auto modifierCookie = xcb_get_modifier_mapping(connection);
    const auto keyboardCookie = xcb_get_keyboard_mapping(connection, first, count);
    const X11Reply<xcb_get_modifier_mapping_reply_t> mapping(
        xcb_get_modifier_mapping_reply(connection, modifierCookie, nullptr));
    const X11Reply<xcb_get_keyboard_mapping_reply_t> keyboard(
        xcb_get_keyboard_mapping_reply(connection, keyboardCookie, nullptr));
    if (!mapping || !keyboard) return modifiers;

    std::uint32_t command = 0;
    std::uint32_t option = 0;
    const xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(mapping.get());
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(keyboard.get());
    constexpr int firstFreeModifier = 3;
    constexpr int modifierCount = 8;
    for (int modifier = firstFreeModifier; modifier < modifierCount; ++modifier) {
        for (int i = 0; i < mapping->keycodes_per_modifier; ++i) {
            const int key = keys[modifier * mapping->keycodes_per_modifier + i] - first;
            if (key < 0 || key >= count) continue;
            for (int level = 0; level < keyboard->keysyms_per_keycode; ++level) {
                const xcb_keysym_t symbol = symbols[key * keyboard->keysyms_per_keycode + level];
                if (isSuper(symbol)) command |= 1U << modifier;
                if (isOption(symbol)) option |= 1U << modifier;
            }
        }
    }
    if (command != 0) modifiers.command_ = command;
    if (option != 0) modifiers.option_ = option;
    return modifiers;
}

std::uint64_t KeyModifiers::flags(std::uint32_t state) const {
    std::uint64_t flags = 0;
    if ((state & XCB_MOD_MASK_SHIFT) != 0) flags |= shiftFlag;
    if ((state & XCB_MOD_MASK_CONTROL) != 0) flags |= controlFlag;
    if ((state & option_) != 0) flags |= optionFlag;
    if ((state & command_) != 0) flags |= commandFlag;
    return flags;
}

}  // namespace vantrel::linuxdesktop
