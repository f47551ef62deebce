#include <gtest/gtest.h>

#include <map>
#include <string>

#include "platform/linux/keyboard/KeyPositions.h"

namespace vantrel::linuxdesktop {
namespace {

struct Key {
    std::string name;
    int xKeycode;
    int macKeyCode;
};

// An independent list, key by key: X keycodes by the names in the keymaps of evdev keyboards, macOS codes by Carbon's
// constants.
const std::vector<Key>& keys() {
    static const std::vector<Key> list{
        {"AD01 Q", 24, 0x0C},    {"AD02 W", 25, 0x0D}, {"AD03 E", 26, 0x0E},  {"AD04 R", 27, 0x0F},
        {"AD05 T", 28, 0x11},    {"AD06 Y", 29, 0x10}, {"AD07 U", 30, 0x20},  {"AD08 I", 31, 0x22},
        {"AD09 O", 32, 0x1F},    {"AD10 P", 33, 0x23}, {"AD11 [", 34, 0x21},  {"AD12 ]", 35, 0x1E},
        {"AC01 A", 38, 0x00},    {"AC02 S", 39, 0x01}, {"AC03 D", 40, 0x02},  {"AC04 F", 41, 0x03},
        {"AC05 G", 42, 0x05},    {"AC06 H", 43, 0x04}, {"AC07 J", 44, 0x26},  {"AC08 K", 45, 0x28},
        {"AC09 L", 46, 0x25},    {"AC10 ;", 47, 0x29}, {"AC11 '", 48, 0x27},  {"AB01 Z", 52, 0x06},
        {"AB02 X", 53, 0x07},    {"AB03 C", 54, 0x08}, {"AB04 V", 55, 0x09},  {"AB05 B", 56, 0x0B},
        {"AB06 N", 57, 0x2D},    {"AB07 M", 58, 0x2E}, {"AB08 ,", 59, 0x2B},  {"AB09 .", 60, 0x2F},
        {"AB10 /", 61, 0x2C},    {"AE01 1", 10, 0x12}, {"AE02 2", 11, 0x13},  {"AE03 3", 12, 0x14},
        {"AE04 4", 13, 0x15},    {"AE05 5", 14, 0x17}, {"AE06 6", 15, 0x16},  {"AE07 7", 16, 0x1A},
        {"AE08 8", 17, 0x1C},    {"AE09 9", 18, 0x19}, {"AE10 0", 19, 0x1D},  {"AE11 -", 20, 0x1B},
        {"AE12 =", 21, 0x18},    {"TLDE", 49, 0x32},   {"LSGT", 94, 0x0A},    {"BKSL", 51, 0x2A},
        {"RTRN", 36, 0x24},      {"TAB", 23, 0x30},    {"SPCE", 65, 0x31},    {"BKSP", 22, 0x33},
        {"ESC", 9, 0x35},        {"LWIN", 133, 0x37},  {"RWIN", 134, 0x36},   {"LFSH", 50, 0x38},
        {"RTSH", 62, 0x3C},      {"CAPS", 66, 0x39},   {"LALT", 64, 0x3A},    {"RALT", 108, 0x3D},
        {"LCTL", 37, 0x3B},      {"RCTL", 105, 0x3E},  {"UP", 111, 0x7E},     {"LEFT", 113, 0x7B},
        {"RGHT", 114, 0x7C},     {"DOWN", 116, 0x7D},  {"HOME", 110, 0x73},   {"END", 115, 0x77},
        {"PGUP", 112, 0x74},     {"PGDN", 117, 0x79},  {"INS", 118, 0x72},    {"DELE", 119, 0x75},
        {"FK01", 67, 0x7A},      {"FK02", 68, 0x78},   {"FK03", 69, 0x63},    {"FK04", 70, 0x76},
        {"FK05", 71, 0x60},      {"FK06", 72, 0x61},   {"FK07", 73, 0x62},    {"FK08", 74, 0x64},
        {"FK09", 75, 0x65},      {"FK10", 76, 0x6D},   {"FK11", 95, 0x67},    {"FK12", 96, 0x6F},
        {"PRSC", 107, 0x69},     {"SCLK", 78, 0x6B},   {"PAUS", 127, 0x71},   {"FK13", 191, 0x69},
        {"FK14", 192, 0x6B},     {"FK15", 193, 0x71},  {"FK16", 194, 0x6A},   {"FK17", 195, 0x40},
        {"FK18", 196, 0x4F},     {"FK19", 197, 0x50},  {"FK20", 198, 0x5A},   {"KP0", 90, 0x52},
        {"KP1", 87, 0x53},       {"KP2", 88, 0x54},    {"KP3", 89, 0x55},     {"KP4", 83, 0x56},
        {"KP5", 84, 0x57},       {"KP6", 85, 0x58},    {"KP7", 79, 0x59},     {"KP8", 80, 0x5B},
        {"KP9", 81, 0x5C},       {"KPDL", 91, 0x41},   {"KPEN", 104, 0x4C},   {"KPAD", 86, 0x45},
        {"KPSU", 82, 0x4E},      {"KPMU", 63, 0x43},   {"KPDV", 106, 0x4B},   {"KPEQ", 125, 0x51},
        {"NMLK", 77, 0x47},      {"COMP", 135, 0x6E},  {"AB11 ro", 97, 0x5E}, {"AE13 yen", 132, 0x5D},
        {"KP comma", 129, 0x5F}, {"HNGL", 130, 0x68},  {"HJCV", 131, 0x66},
    };
    return list;
}

TEST(KeyPositions, GiveEachKeyTheMacOSCodeOfItsPosition) {
    for (const Key& key : keys()) {
        EXPECT_EQ(macKeyCode(static_cast<xcb_keycode_t>(key.xKeycode)), key.macKeyCode) << key.name;
    }
}

TEST(KeyPositions, KnowNoOtherKeys) {
    std::map<int, std::string> known;
    for (const Key& key : keys()) EXPECT_TRUE(known.emplace(key.xKeycode, key.name).second) << key.name;
    for (int position = 0; position < 256; ++position) {
        if (known.contains(position)) continue;
        EXPECT_EQ(macKeyCode(static_cast<xcb_keycode_t>(position)), std::nullopt) << position;
    }
}

TEST(KeyPositions, CallTheFourModifiersAndCapsLockKeysThatChangeFlags) {
    const std::map<std::int64_t, std::uint64_t> flags{{54, 0x100000}, {55, 0x100000}, {56, 0x20000}, {60, 0x20000},
                                                      {58, 0x80000},  {61, 0x80000},  {59, 0x40000}, {62, 0x40000}};
    for (std::int64_t code = 0; code < 128; ++code) {
        const auto flag = flags.find(code);
        EXPECT_EQ(modifierFlag(code), flag == flags.end() ? 0 : flag->second) << code;
        EXPECT_EQ(changesFlags(code), flag != flags.end() || code == 57) << code;
    }
}

}  // namespace
}  // namespace vantrel::linuxdesktop
