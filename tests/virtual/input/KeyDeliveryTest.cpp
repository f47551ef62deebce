#include "tests/virtual/input/KeyboardTest.h"

namespace vantrel::virtualmac {
namespace {

class KeyDeliveryTest : public KeyboardTest {};

TEST_F(KeyDeliveryTest, CommandQQuitsTheApplicationInFront) {
    pressAndSee("cmd+q");
    EXPECT_FALSE(mac().processes().find(chrome)->isAlive());
    EXPECT_TRUE(mac().processes().find(terminal)->isAlive());
}

TEST_F(KeyDeliveryTest, CommandWClosesAndCommandMMinimisesTheFrontWindow) {
    pressAndSee("cmd+m");
    EXPECT_TRUE(state().minimised);
    mac().desktop().setMinimised(window, false);
    pressAndSee("cmd+w");
    EXPECT_TRUE(mac().desktop().windowsOf(chrome).empty());
    EXPECT_EQ(1U, mac().desktop().windowsOf(terminal).size());
}

TEST_F(KeyDeliveryTest, CommandHHidesTheApplicationAndShowsTheOneBehind) {
    pressAndSee("cmd+h");
    EXPECT_FALSE(mac().desktop().isOnScreen(window));
    EXPECT_EQ("Terminal", inFront());
    pressAndSee("cmd+tab");
    EXPECT_TRUE(mac().desktop().isOnScreen(window));
}

TEST_F(KeyDeliveryTest, CommandTabGoesBackAndForth) {
    pressAndSee("cmd+tab");
    EXPECT_EQ("Terminal", inFront());
    pressAndSee("cmd+tab");
    EXPECT_EQ("Google Chrome", inFront());
    EXPECT_EQ(0, mac().keys().received().front().process);
}

TEST_F(KeyDeliveryTest, CommandControlFAndControlArrowsChangeTheSpace) {
    pressAndSee("cmd+ctrl+f");
    mac().runFor(1);
    EXPECT_TRUE(state().fullScreen);
    EXPECT_TRUE(mac().spaces().isFullScreen());
    pressAndSee("ctrl+left");
    EXPECT_FALSE(mac().spaces().isFullScreen());
    pressAndSee("ctrl+right");
    EXPECT_TRUE(mac().spaces().isFullScreen());
    mac().runFor(1);
    pressAndSee("cmd+ctrl+f");
    mac().runFor(1);
    EXPECT_FALSE(state().fullScreen);
}

TEST_F(KeyDeliveryTest, CommandSpaceShowsSpotlight) {
    pressAndSee("cmd+space");
    EXPECT_EQ("Spotlight", inFront());
    pressAndSee("cmd+tab");
    pressAndSee("cmd+space");
    EXPECT_EQ("Spotlight", inFront());
    EXPECT_EQ(Lines{"Spotlight"}, texts(ApplicationEvent::started));
}

TEST_F(KeyDeliveryTest, OtherKeysOnlyReachTheApplication) {
    press("q");
    press("cmd+ctrl+q");
    press("ctrl+f");
    press("alt+w");
    mac().runFor(0);
    EXPECT_TRUE(mac().processes().find(chrome)->isAlive());
    EXPECT_FALSE(state().fullScreen);
    EXPECT_EQ((Lines{"q", "cmd+ctrl+q", "ctrl+f", "alt+w"}), texts(KeyboardEvent::delivered));
}

TEST_F(KeyDeliveryTest, NothingOfItHappensToKeysThatATapSwallows) {
    startTap();
    const auto before = mac().desktop().windows().size();
    for (const char* key :
         {"cmd+q", "cmd+w", "cmd+m", "cmd+h", "cmd+tab", "cmd+ctrl+f", "ctrl+left", "ctrl+right", "cmd+space"}) {
        press(key);
    }
    mac().runFor(5);
    EXPECT_EQ(9U, texts(KeyboardEvent::swallowed).size());
    EXPECT_TRUE(mac().keys().received().empty());
    EXPECT_TRUE(mac().processes().find(chrome)->isAlive());
    EXPECT_EQ(before, mac().desktop().windows().size());
    EXPECT_TRUE(mac().desktop().isOnScreen(window));
    EXPECT_EQ((Rect{{100, 100}, {800, 600}}), state().frame);
    EXPECT_EQ("Google Chrome", inFront());
    EXPECT_EQ(Lines{}, texts(SystemEvent::spaceChanged));
}

TEST_F(KeyDeliveryTest, AKeyWithNobodyInFrontGoesNowhere) {
    mac().processes().exit(chrome);
    mac().processes().exit(terminal);
    pressAndSee("cmd+q");
    EXPECT_EQ((Happening{KeyboardEvent::delivered, "cmd+q", {{Field::code, "12"}, {Field::flags, "1048576"}}}),
              transcript().back());
}

}  // namespace
}  // namespace vantrel::virtualmac
