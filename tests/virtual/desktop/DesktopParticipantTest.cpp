#include <string>
#include <vector>

#include "tests/virtual/desktop/DesktopTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

class DesktopParticipantTest : public DesktopTest {
  protected:
    std::string ignored() { return events<DesktopDeed>().back().field(Field::ignored); }
};

TEST_F(DesktopParticipantTest, DragsResizesMinimisesAndRestoresAWindow) {
    participant().moveWindowOf("Google Chrome", {300, 200});
    participant().resizeWindowOf("Google Chrome", {400, 300});
    participant().minimiseWindowOf("Google Chrome");
    mac().runFor(0);
    EXPECT_EQ((Rect{{300, 200}, {400, 300}}), state().frame);
    EXPECT_TRUE(state().minimised);
    participant().moveWindowOf("Google Chrome", {1, 1});
    mac().runFor(0);
    EXPECT_EQ("it has no such window", ignored());
    participant().restoreWindowOf("Google Chrome");
    mac().runFor(0);
    EXPECT_TRUE(isOnScreen());
    EXPECT_EQ((Happening{DesktopDeed::moveWindow, "Google Chrome", {{Field::value, "300 200"}}}), transcript().front());
}

TEST_F(DesktopParticipantTest, ClosesAWindowAndQuitsAnApplication) {
    participant().closeWindowOf("Google Chrome");
    mac().runFor(0);
    EXPECT_TRUE(mac().desktop().windows().empty());
    participant().closeWindowOf("Google Chrome");
    participant().quit("Google Chrome");
    mac().runFor(0);
    EXPECT_FALSE(mac().processes().find(process)->isAlive());
    participant().quit("Google Chrome");
    mac().runFor(0);
    EXPECT_EQ("it does not run", ignored());
}

TEST_F(DesktopParticipantTest, QuitsAndKillsAnotherApplicationOfTheClientsNameAndNeverTheClient) {
    const auto own = mac().processes().find(mac().applications().ownProcess());
    const ProcessIdentifier namesake = mac().processes().add({"Vantrel", "com.example.other"});
    participant().quit("Vantrel");
    mac().runFor(0);
    EXPECT_FALSE(mac().processes().find(namesake)->isAlive());
    participant().kill("Vantrel");
    participant().openWindowOf("Vantrel", {});
    mac().runFor(1);
    EXPECT_EQ("it does not run", ignored());
    EXPECT_TRUE(own->isAlive());
    participant().bringToFront("Vantrel");
    mac().runFor(0);
    EXPECT_TRUE(own->isFrontmost());
}

TEST_F(DesktopParticipantTest, StartsAnApplicationAndBringsOthersToTheFront) {
    participant().openApplication(safariPath);
    participant().openApplication(edgePath);
    mac().runFor(0);
    EXPECT_EQ("it cannot be started", ignored());
    mac().runFor(2);
    EXPECT_EQ("Safari", mac().desktop().front().front().name);
    participant().bringToFront("Google Chrome");
    mac().runFor(0);
    EXPECT_EQ("Google Chrome", mac().desktop().front().front().name);
}

TEST_F(DesktopParticipantTest, LeavesFullScreenAndSwipesBetweenSpaces) {
    participant().swipe(VirtualSpaces::Direction::left);
    mac().runFor(0);
    EXPECT_EQ("there is no Space beside this one", ignored());
    participant().toggleFullScreenOf("Google Chrome");
    settle();
    EXPECT_TRUE(state().fullScreen);
    participant().resizeWindowOf("Google Chrome", {5, 5});
    participant().swipe(VirtualSpaces::Direction::left);
    settle();
    EXPECT_FALSE(isOnScreen());
    EXPECT_EQ(2, notices);
    participant().toggleFullScreenOf("Google Chrome");
    settle();
    EXPECT_FALSE(state().fullScreen);
}

TEST_F(DesktopParticipantTest, OpensAFurtherWindowAndKillsAProcess) {
    participant().openWindowOf("Google Chrome", {"Altra"});
    mac().runFor(0);
    EXPECT_EQ(2U, mac().desktop().windowsOf(process).size());
    participant().kill("Google Chrome");
    participant().kill("Google Chrome");
    mac().runFor(0);
    EXPECT_FALSE(mac().processes().find(process)->isAlive());
    participant().openWindowOf("Google Chrome", {"Altra"});
    mac().runFor(0);
    EXPECT_EQ("it does not run", ignored());
}

TEST_F(DesktopParticipantTest, SeesStaleWindowFlagsAsLongAsTheMacIsToldTo) {
    mac().desktop().setFlagDelay(0.2);
    mac().desktop().setFullScreen(window, true);
    settle();
    participant().swipe(VirtualSpaces::Direction::left);
    mac().runFor(0.1);
    EXPECT_TRUE(isOnScreen());
    mac().runFor(0.2);
    EXPECT_FALSE(isOnScreen());
}

TEST_F(DesktopParticipantTest, BringsTheClientToTheFrontWithAClickIntoItsWindow) {
    std::unique_ptr<Window> own;
    mac().onMain([&] {
        Control button;
        button.kind = Control::Kind::button;
        button.id = "ok";
        own = computer().windows.makeWindow({{}, windowTitled, "Vantrel", false, {{"view", {}, 0, false, {button}}}},
                                            [](std::string_view) {});
        own->makeKeyAndOrderFront();
    });
    EXPECT_EQ(process, mac().desktop().front().front().process);
    participant().press("ok");
    mac().runFor(0);
    EXPECT_EQ(mac().applications().ownProcess(), mac().desktop().front().front().process);
    EXPECT_EQ(Lines{"Vantrel"}, texts(ApplicationEvent::frontmost));
    mac().onMain([&] { own.reset(); });
}

}  // namespace
}  // namespace vantrel::virtualmac
