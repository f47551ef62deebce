#include <gtest/gtest.h>
#include <poll.h>
#include <xcb/xinput.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/keyboard/KeyboardFilter.h"
#include "platform/linux/x11/X11Connection.h"
#include "tests/linux/x11/DummyDisplay.h"
#include "tests/linux/x11/KeyWindow.h"
#include "tests/linux/x11/MasterPair.h"
#include "tests/linux/x11/TestKeyboard.h"

namespace vantrel::linuxdesktop {
namespace {

using Positions = std::vector<xcb_keycode_t>;

/// A filter that swallows Q and W. It runs on its own X server, which, unlike Xvfb, survives the removal of a keyboard
/// in use. Only once for each server: after a few more rounds, keys passed on from a new keyboard reach no window until
/// the filter is opened again. Keys are typed on the second keyboard while there is one.
class KeyboardRemovalTest : public testing::Test {
  protected:
    void SetUp() override {
        before = std::getenv("DISPLAY") != nullptr ? std::getenv("DISPLAY") : "";
        ASSERT_FALSE(display.name().empty()) << "the X server with the dummy driver does not start:\n" << display.log();
        setenv("DISPLAY", display.name().c_str(), 1);
        keyboard.emplace();
        const X11Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
            keyboard->connection(), xcb_input_xi_query_version(keyboard->connection(), 2, 2), nullptr));
        ASSERT_TRUE(version);
        window.emplace();
        xcb_set_input_focus(window->connection(), XCB_INPUT_FOCUS_NONE, window->id(), XCB_CURRENT_TIME);
        window->hasFocus();
        filter = KeyboardFilter::open();
        ASSERT_TRUE(filter);
        ASSERT_TRUE(filter->grab());
    }

    void TearDown() override {
        filter.reset();
        second.reset();
        window.reset();
        keyboard.reset();
        setenv("DISPLAY", before.c_str(), 1);
    }

    void addKeyboard() {
        second = std::make_unique<MasterPair>(keyboard->connection());
        ASSERT_NE(second->keyboard(), 0);
        answerAll();
        xcb_input_xi_set_client_pointer(keyboard->connection(), XCB_WINDOW_NONE, second->pointer());
        xcb_input_xi_set_focus(keyboard->connection(), window->id(), XCB_CURRENT_TIME, second->keyboard());
    }

    void removeKeyboard() {
        second.reset();
        answerAll();
    }

    // Lets the filter answer until nothing has come for a while.
    void answerAll() {
        constexpr int milliseconds = 100;
        pollfd waited{filter->descriptor(), POLLIN, 0};
        do {
            ASSERT_TRUE(
                filter->answer([](const KeyEvent& event) { return event.keyCode == 12 || event.keyCode == 13; }));
        } while (poll(&waited, 1, milliseconds) == 1);
    }

    // What reaches the window if all keys are typed before the filter answers the first.
    Positions typedTogether(const Positions& positions) {
        window->forget();
        for (const xcb_keycode_t position : positions) keyboard->type(position);
        answerAll();
        return window->positions();
    }

    std::string before;
    DummyDisplay display;
    std::optional<TestKeyboard> keyboard;
    std::optional<KeyWindow> window;
    std::unique_ptr<KeyboardFilter> filter;
    std::unique_ptr<MasterPair> second;
};

TEST_F(KeyboardRemovalTest, LeavesNothingBehindOfAKeyboardThatGoesWhileASwallowedKeyIsDown) {
    addKeyboard();
    const std::uint16_t number = second->keyboard();
    keyboard->press(positionOfQ);
    answerAll();
    removeKeyboard();
    addKeyboard();
    ASSERT_EQ(second->keyboard(), number) << "the new keyboard is to have the number of the one that has gone";
    EXPECT_EQ(typedTogether({positionOfW, positionOfA, positionOfW, positionOfB}),
              (Positions{positionOfA, positionOfB}));
}

TEST_F(KeyboardRemovalTest, FiltersTheKeyboardThatStays) {
    addKeyboard();
    keyboard->press(positionOfQ);
    answerAll();
    removeKeyboard();
    EXPECT_EQ(typedTogether({positionOfQ, positionOfA, positionOfW, positionOfB}),
              (Positions{positionOfA, positionOfB}));
}

TEST_F(KeyboardRemovalTest, GoesOnWhenAKeyboardGoesBeforeItsKeyIsAnswered) {
    addKeyboard();
    keyboard->press(positionOfQ);
    removeKeyboard();
    EXPECT_EQ(typedTogether({positionOfW, positionOfA}), Positions{positionOfA});
    addKeyboard();
    EXPECT_EQ(typedTogether({positionOfW, positionOfA}), Positions{positionOfA});
}

}  // namespace
}  // namespace vantrel::linuxdesktop
