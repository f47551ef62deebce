#include "tests/virtual/desktop/DesktopTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

TEST_F(DesktopTest, KeepsWindowsBelowTheMenuBar) {
    EXPECT_TRUE(mac().desktop().move(window, {10, 0}));
    EXPECT_EQ((Rect{{10, 24}, {800, 600}}), state().frame);
    EXPECT_TRUE(mac().desktop().resize(window, {1440, 900}));
    EXPECT_EQ((Rect{{10, 24}, {1440, 900}}), state().frame);
    EXPECT_EQ((Happenings{
                  {AppWindowEvent::moved,
                   "Lezione",
                   {{Field::pid, "501"}, {Field::number, "1001"}, {Field::frame, "10 24 800 600"}}},
                  {AppWindowEvent::moved,
                   "Lezione",
                   {{Field::pid, "501"}, {Field::number, "1001"}, {Field::frame, "10 24 1440 900"}}},
              }),
              transcript());
    EXPECT_FALSE(mac().desktop().move(77, {0, 0}));
}

TEST_F(DesktopTest, HidesMinimisedWindowsAndThoseOfHiddenApplications) {
    EXPECT_TRUE(isOnScreen());
    EXPECT_TRUE(mac().desktop().setMinimised(window, true));
    EXPECT_FALSE(isOnScreen());
    EXPECT_TRUE(mac().desktop().setMinimised(window, false));
    mac().desktop().setHidden(process, true);
    EXPECT_FALSE(isOnScreen());
    mac().processes().find(process)->comeToFront();
    EXPECT_TRUE(isOnScreen());
    EXPECT_EQ((Happenings{
                  {AppWindowEvent::minimised, "Lezione", {{Field::pid, "501"}, {Field::number, "1001"}}},
                  {AppWindowEvent::restored, "Lezione", {{Field::pid, "501"}, {Field::number, "1001"}}},
              }),
              transcript());
}

TEST_F(DesktopTest, PutsAFullScreenWindowOnASpaceOfItsOwnAfterATransition) {
    EXPECT_TRUE(mac().desktop().setFullScreen(window, true));
    mac().runFor(0);
    EXPECT_EQ(1, notices);
    EXPECT_TRUE(mac().spaces().isFullScreen());
    EXPECT_EQ(2U, mac().spaces().count());
    EXPECT_FALSE(state().fullScreen);
    EXPECT_TRUE(isOnScreen());
    EXPECT_FALSE(mac().desktop().setFullScreen(window, false)) << "nothing can be asked for during a transition";
    mac().runFor(0.69);
    EXPECT_FALSE(state().fullScreen);
    mac().runFor(0.02);
    EXPECT_TRUE(state().fullScreen);
    EXPECT_EQ((Rect{{0, 0}, {1440, 900}}), state().frame);
    EXPECT_FALSE(mac().desktop().move(window, {5, 5}));
    EXPECT_FALSE(mac().desktop().setMinimised(window, true));
    EXPECT_EQ(1, notices);
    EXPECT_EQ((Happenings{
                  {SystemEvent::spaceChanged, "Display integrato", {{Field::space, "full screen of Lezione"}}},
                  {AppWindowEvent::fullScreen,
                   "Lezione",
                   {{Field::pid, "501"}, {Field::number, "1001"}, {Field::frame, "0 0 1440 900"}, {Field::on, "yes"}}},
              }),
              transcript());
}

TEST_F(DesktopTest, BringsTheDesktopBackWhenFullScreenEnds) {
    mac().desktop().setFullScreen(window, true);
    settle();
    forgetEvents();
    EXPECT_TRUE(mac().desktop().setFullScreen(window, false));
    mac().runFor(0);
    EXPECT_EQ(2, notices);
    EXPECT_TRUE(state().fullScreen);
    settle();
    EXPECT_FALSE(state().fullScreen);
    EXPECT_EQ((Rect{{100, 100}, {800, 600}}), state().frame);
    EXPECT_TRUE(isOnScreen());
    EXPECT_EQ(1U, mac().spaces().count());
    EXPECT_EQ(
        (Happenings{
            {SystemEvent::spaceChanged, "Display integrato", {{Field::space, "desktop 1"}}},
            {AppWindowEvent::fullScreen,
             "Lezione",
             {{Field::pid, "501"}, {Field::number, "1001"}, {Field::frame, "100 100 800 600"}, {Field::on, "no"}}},
        }),
        transcript());
}

TEST_F(DesktopTest, BringsTheDesktopBackWhenAFullScreenWindowGoes) {
    mac().desktop().setFullScreen(window, true);
    settle();
    EXPECT_TRUE(mac().desktop().close(window));
    mac().runFor(0);
    EXPECT_EQ(2, notices);
    EXPECT_FALSE(mac().spaces().isFullScreen());
    const auto second = mac().applications().openWindow(process, {"Altra"});
    mac().desktop().setFullScreen(second, true);
    mac().runFor(0.3);
    mac().processes().exit(process);
    settle();
    EXPECT_EQ(4, notices);
    EXPECT_EQ(1U, mac().spaces().count());
    EXPECT_TRUE(texts(AppWindowEvent::fullScreen).size() == 1) << "the second transition has no end";
}

TEST_F(DesktopTest, LeavesAFullScreenWindowAloneWhenAnotherWindowOnItsSpaceGoes) {
    mac().desktop().setFullScreen(window, true);
    settle();
    const auto other = mac().processes().openWindow(process, {"Finestrella", {{100, 100}, {400, 300}}});
    settle();
    forgetEvents();
    notices = 0;
    EXPECT_TRUE(mac().desktop().close(other));
    settle();
    EXPECT_EQ(0, notices);
    EXPECT_TRUE(mac().spaces().isFullScreen());
    EXPECT_TRUE(isOnScreen());
    EXPECT_EQ((Happenings{
                  {AppWindowEvent::closed, "Finestrella", {{Field::pid, "501"}, {Field::number, "1002"}}},
              }),
              transcript());
}

TEST_F(DesktopTest, NamesAFullScreenSpaceByTheWindowThatItBelongsTo) {
    mac().spaces().addDesktop();
    mac().desktop().setFullScreen(window, true);
    settle();
    mac().processes().openWindow(process, {"Finestrella", {{100, 100}, {400, 300}}});
    settle();
    mac().spaces().switchTo(0);
    settle();
    forgetEvents();
    mac().spaces().switchTo(1);
    mac().runFor(0);
    EXPECT_EQ("full screen of Lezione", events(SystemEvent::spaceChanged).at(0).field(Field::space));
}

TEST_F(DesktopTest, TellsTheOldStateInItsFlagsForAMomentAfterAChangeOfSpace) {
    mac().desktop().setFullScreen(window, true);
    settle();
    EXPECT_TRUE(mac().spaces().swipe(VirtualSpaces::Direction::left));
    mac().runFor(0);
    EXPECT_EQ(2, notices);
    EXPECT_TRUE(isOnScreen());
    mac().runFor(0.55);
    EXPECT_TRUE(isOnScreen());
    mac().runFor(0.02);
    EXPECT_FALSE(isOnScreen());
}

TEST_F(DesktopTest, SettlesWithTheLastOfSeveralChangesOfSpace) {
    mac().desktop().setFullScreen(window, true);
    settle();
    mac().spaces().swipe(VirtualSpaces::Direction::left);
    mac().runFor(0.3);
    mac().spaces().swipe(VirtualSpaces::Direction::right);
    mac().runFor(0.4);
    EXPECT_TRUE(isOnScreen());
    settle();
    EXPECT_TRUE(isOnScreen());
    EXPECT_EQ(3, notices);
}

TEST_F(DesktopTest, SwitchesToTheSpaceOfAnApplicationThatComesToTheFront) {
    mac().desktop().setFullScreen(window, true);
    settle();
    mac().spaces().switchTo(0);
    settle();
    EXPECT_TRUE(computer().runningApplications.withProcessIdentifier(process)->activate(ActivationOptions::none));
    settle();
    EXPECT_TRUE(mac().spaces().isFullScreen());
    EXPECT_TRUE(isOnScreen());
    EXPECT_EQ(3, notices);
}

TEST_F(DesktopTest, StaysWhereItIsWhenAnApplicationWithAWindowInSightComesToTheFront) {
    mac().applications().openWindow(process, {"Seconda"});
    mac().desktop().setFullScreen(window, true);
    settle();
    mac().spaces().switchTo(0);
    settle();
    mac().processes().find(process)->comeToFront();
    settle();
    EXPECT_FALSE(mac().spaces().isFullScreen());
}

TEST_F(DesktopTest, OpensWindowsOfOthersOnADesktopAndGoesThereWithThem) {
    mac().desktop().setFullScreen(window, true);
    settle();
    const auto other = mac().applications().add({"Note", "com.apple.Notes"});
    NewWindow quiet{"In silenzio"};
    quiet.activates = false;
    mac().applications().openWindow(other, quiet);
    EXPECT_TRUE(mac().spaces().isFullScreen());
    mac().applications().openWindow(other, {"In vista"});
    EXPECT_FALSE(mac().spaces().isFullScreen());
}

TEST_F(DesktopTest, KnowsTheEndsOfTheRowOfSpaces) {
    EXPECT_FALSE(mac().spaces().swipe(VirtualSpaces::Direction::left));
    EXPECT_FALSE(mac().spaces().swipe(VirtualSpaces::Direction::right));
    mac().spaces().addDesktop();
    EXPECT_TRUE(mac().spaces().swipe(VirtualSpaces::Direction::right));
    EXPECT_EQ(1U, mac().spaces().current());
    EXPECT_FALSE(mac().spaces().switchTo(2));
    settle();
    EXPECT_EQ(1, notices);
    EXPECT_FALSE(isOnScreen());
}

TEST_F(DesktopTest, GivesEachDisplaySpacesOfItsOwn) {
    mac().screens().plug({"DELL", {{1440, 0}, {1920, 1080}}});
    // Side by side with level bottom edges: its top is 180 points above the primary one's.
    const auto second = mac().applications().openWindow(process, {"Di là", {{1600, -150}, {500, 400}}});
    EXPECT_EQ(-150, mac().desktop().window(second)->frame.origin.y);
    mac().desktop().setFullScreen(second, true);
    settle();
    EXPECT_EQ((Rect{{1440, -180}, {1920, 1080}}), mac().desktop().window(second)->frame);
    EXPECT_TRUE(mac().spaces().isFullScreen("DELL"));
    EXPECT_FALSE(mac().spaces().isFullScreen());
    EXPECT_TRUE(isOnScreen());
    EXPECT_EQ(1, notices);
    mac().screens().unplug("DELL");
    EXPECT_EQ((Rect{{0, 0}, {1440, 900}}), mac().desktop().window(second)->frame);
    EXPECT_EQ(2U, mac().spaces().count());
    EXPECT_FALSE(mac().desktop().isOnScreen(second));
}

TEST_F(DesktopTest, SharesTheSpacesAmongAllDisplaysWhenTheyAreNotSeparate) {
    Displays displays;
    displays.haveSeparateSpaces = false;
    displays.screens.push_back({"DELL", {{1440, 0}, {1920, 1080}}});
    mac().screens().setUp(displays);
    const auto second = mac().applications().openWindow(process, {"Di là", {{1600, 100}, {500, 400}}});
    mac().desktop().setFullScreen(window, true);
    settle();
    EXPECT_FALSE(mac().desktop().isOnScreen(second));
    EXPECT_EQ(1U, mac().desktop().spaces().size());
    EXPECT_EQ(Lines{""}, texts(SystemEvent::spaceChanged));
}

TEST_F(DesktopTest, TellsNobodyWhoHasStoppedListening) {
    EXPECT_EQ(1U, mac().leftovers().observers);
    mac().onMain([this] {
        mac().spaces().addDesktop();
        mac().spaces().switchTo(1);
        observation.reset();
    });
    settle();
    EXPECT_EQ(0, notices);
    EXPECT_EQ(0U, mac().leftovers().observers);
}

}  // namespace
}  // namespace vantrel::virtualmac
