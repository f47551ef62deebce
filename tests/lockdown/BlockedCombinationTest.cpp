#include <gtest/gtest.h>

#include <map>
#include <string>
#include <tuple>

#include "lockdown/BlockedCombination.h"

namespace vantrel {
namespace {

constexpr std::uint64_t shift = 1 << 17;
constexpr std::uint64_t control = 1 << 18;
constexpr std::uint64_t option = 1 << 19;
constexpr std::uint64_t command = 1 << 20;

KeyEvent press(std::int64_t keyCode, std::uint64_t flags) {
    return {KeyEventType::keyDown, keyCode, flags};
}

/// The table of keys as a person reads it, key by key: the names with Command alone, with Command and Shift, with
/// Command and Control, with all three, with Control, and with Control and Shift. "" passes.
struct Row {
    const char* command;
    const char* commandShift;
    const char* commandControl;
    const char* commandControlShift;
    const char* control;
    const char* controlShift;
};

Row always(const char* name) {
    return {name, name, name, name, "", ""};
}

const std::map<int, Row>& table() {
    static const std::map<int, Row> rows{
        {2, always("Cmd+D")},
        {4, always("Cmd+H")},
        {12, always("Cmd+Q")},
        {13, always("Cmd+W")},
        {17, always("Cmd+T")},
        {37, always("Cmd+L")},
        {45, always("Cmd+N")},
        {46, always("Cmd+M")},
        {18, always("Cmd+1")},
        {19, always("Cmd+2")},
        {20, always("Cmd+3")},
        {21, always("Cmd+4")},
        {23, always("Cmd+5")},
        {22, always("Cmd+6")},
        {26, always("Cmd+7")},
        {28, always("Cmd+8")},
        {25, always("Cmd+9")},
        {49, always("Cmd+Space")},
        {123, {"Cmd+Arrow", "Cmd+Arrow", "Cmd+Arrow", "Cmd+Arrow", "Ctrl+Arrow", "Ctrl+Arrow"}},
        {124, {"Cmd+Arrow", "Cmd+Arrow", "Cmd+Arrow", "Cmd+Arrow", "Ctrl+Arrow", "Ctrl+Arrow"}},
        {48, {"Cmd+Tab", "Cmd+Shift+Tab", "Cmd+Tab", "Cmd+Shift+Tab", "Ctrl+Tab", "Ctrl+Shift+Tab"}},
        {125, {"", "", "Ctrl+Down", "Ctrl+Down", "Ctrl+Down", "Ctrl+Down"}},
        {126, {"", "", "Ctrl+Up", "Ctrl+Up", "Ctrl+Up", "Ctrl+Up"}},
        {3, {"", "", "Cmd+Ctrl+F", "Cmd+Ctrl+F", "", ""}},
    };
    return rows;
}

std::string expected(int keyCode, std::uint64_t flags) {
    const auto row = table().find(keyCode);
    if (row == table().end()) return "";
    const bool withShift = (flags & shift) != 0;
    const bool withControl = (flags & control) != 0;
    const bool withCommand = (flags & command) != 0;
    const Row& names = row->second;
    if (withCommand && withControl) return withShift ? names.commandControlShift : names.commandControl;
    if (withCommand) return withShift ? names.commandShift : names.command;
    if (withControl) return withShift ? names.controlShift : names.control;
    return "";
}

class EveryKey : public testing::TestWithParam<std::tuple<int, int>> {};

TEST_P(EveryKey, IsNamedAsTheTableOfKeysSays) {
    const auto [keyCode, modifiers] = GetParam();
    const std::uint64_t flags = static_cast<std::uint64_t>(modifiers) << 17;
    EXPECT_EQ(blockedCombination(press(keyCode, flags)), expected(keyCode, flags));
    // Every bit that is no modifier in the table: Caps Lock, the function and the keypad flag, which of two keys it is.
    EXPECT_EQ(blockedCombination(press(keyCode, flags | ~(shift | control | option | command))),
              expected(keyCode, flags));
}

INSTANTIATE_TEST_SUITE_P(BlockedCombination, EveryKey, testing::Combine(testing::Range(0, 128), testing::Range(0, 16)));

TEST(BlockedCombination, IsTheQuitKeyWithShiftOrOptionToo) {
    EXPECT_EQ(blockedCombination(press(12, command | shift)), "Cmd+Q");
    EXPECT_EQ(blockedCombination(press(12, command | option)), "Cmd+Q");
}

TEST(BlockedCombination, SwallowsCommandShift4AsCmd4) {
    EXPECT_EQ(blockedCombination(press(21, command | shift)), "Cmd+4");
}

TEST(BlockedCombination, SwallowsCommandControlFAndLetsControlFPass) {
    EXPECT_EQ(blockedCombination(press(3, command | control)), "Cmd+Ctrl+F");
    EXPECT_EQ(blockedCombination(press(3, control)), "");
}

TEST(BlockedCombination, TellsControlLeftFromCommandControlLeft) {
    EXPECT_EQ(blockedCombination(press(123, control)), "Ctrl+Arrow");
    EXPECT_EQ(blockedCombination(press(123, control | command)), "Cmd+Arrow");
}

TEST(BlockedCombination, LetsCommandZeroAndCommandCommaPass) {
    EXPECT_EQ(blockedCombination(press(29, command)), "");
    EXPECT_EQ(blockedCombination(press(43, command)), "");
}

TEST(BlockedCombination, LooksAtKeyPressesOnly) {
    for (const auto type :
         {KeyEventType::flagsChanged, KeyEventType::tapDisabledByTimeout, KeyEventType::tapDisabledByUserInput}) {
        EXPECT_EQ(blockedCombination({type, 12, command}), "");
    }
}

TEST(BlockedCombination, LetsKeyCodesOutsideOfTheKeyboardPass) {
    for (const std::int64_t keyCode :
         {std::int64_t{-1}, std::int64_t{128}, std::int64_t{0x1000C}, INT64_MAX, INT64_MIN}) {
        EXPECT_EQ(blockedCombination(press(keyCode, command | control | shift)), "") << keyCode;
    }
}

}  // namespace
}  // namespace vantrel
