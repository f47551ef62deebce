#include <algorithm>
#include <cstdlib>

#include "lockdown/BlackoutOverlayManager.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/x11/DummyDisplay.h"
#include "tests/linux/x11/ServerView.h"

namespace vantrel::linuxdesktop {
namespace {

/// On its own X server, where displays come and go as if they were plugged in and out. Needs no window manager.
class HotPlugTest : public DesktopTest {
  protected:
    void SetUp() override {
        before = std::getenv("DISPLAY") != nullptr ? std::getenv("DISPLAY") : "";
        ASSERT_FALSE(display.name().empty()) << "the X server with the dummy driver does not start:\n" << display.log();
        setenv("DISPLAY", display.name().c_str(), 1);
        DesktopTest::SetUp();
        ASSERT_TRUE(computer);
        observation = computer->screens.observeScreenParametersDidChange([this] { ++told; });
        run("--addmode DUMMY1 1280x720");
        run("--addmode DUMMY1 1440x900");
        turnFor(1);
        told = 0;
    }

    void TearDown() override {
        observation.reset();
        DesktopTest::TearDown();
        setenv("DISPLAY", before.c_str(), 1);
    }

    static void run(const std::string& arguments) {
        EXPECT_EQ(std::system(("xrandr " + arguments).c_str()), 0) << arguments;
    }

    void plug() { run("--output DUMMY1 --mode 1280x720 --right-of DUMMY0"); }
    void unplug() { run("--output DUMMY1 --off"); }

    /// Exactly one change was reported.
    void expectToldOnce() {
        EXPECT_TRUE(waitUntil([this] { return told > 0; }));
        turnFor(0.8);
        EXPECT_EQ(told, 1);
        told = 0;
    }

    std::vector<Rect> frames() {
        std::vector<Rect> found;
        for (const Screen& screen : computer->screens.screens()) found.push_back(screen.frame);
        return found;
    }

    DummyDisplay display;
    std::string before;
    std::unique_ptr<Observation> observation;
    int told = 0;
};

constexpr Rect first{{0, 0}, {1440, 900}};

TEST_F(HotPlugTest, TellsOnceOfADisplayThatIsPluggedInAndOnceOfOneThatIsUnplugged) {
    EXPECT_EQ(frames(), std::vector{first});
    plug();
    expectToldOnce();
    EXPECT_EQ(frames(), (std::vector{first, Rect{{1440, 180}, {1280, 720}}}));
    EXPECT_EQ(computer->screens.screens().back().localizedName, "DUMMY1");
    unplug();
    expectToldOnce();
    EXPECT_EQ(frames(), std::vector{first});
}

TEST_F(HotPlugTest, TellsOnceOfADisplayThatMovesOrChangesItsSize) {
    plug();
    expectToldOnce();
    run("--output DUMMY1 --below DUMMY0");
    expectToldOnce();
    EXPECT_EQ(frames(), (std::vector{first, Rect{{0, -720}, {1280, 720}}}));
    run("--output DUMMY1 --mode 1440x900 --below DUMMY0");
    expectToldOnce();
    EXPECT_EQ(frames(), (std::vector{first, Rect{{0, -900}, {1440, 900}}}));
}

TEST_F(HotPlugTest, CountsFromThePrimaryDisplayWhereverItLies) {
    plug();
    expectToldOnce();
    run("--output DUMMY1 --primary");
    expectToldOnce();
    EXPECT_EQ(frames(), (std::vector{Rect{{0, 0}, {1280, 720}}, Rect{{-1440, -180}, {1440, 900}}}));
    run("--output DUMMY1 --left-of DUMMY0");
    expectToldOnce();
    EXPECT_EQ(frames(), (std::vector{Rect{{0, 0}, {1280, 720}}, Rect{{1280, -180}, {1440, 900}}}));
}

TEST_F(HotPlugTest, TakesMirroredDisplaysForOne) {
    plug();
    expectToldOnce();
    run("--output DUMMY1 --mode 1440x900 --same-as DUMMY0");
    expectToldOnce();
    EXPECT_EQ(frames(), std::vector{first});
    run("--output DUMMY1 --mode 1280x720 --same-as DUMMY0");
    turnFor(0.8);
    EXPECT_EQ(frames(), std::vector{first});
    EXPECT_EQ(told, 0);
}

TEST_F(HotPlugTest, SaysNothingOfABurstThatEndsWhereItBegan) {
    plug();
    unplug();
    plug();
    unplug();
    turnFor(1);
    EXPECT_EQ(told, 0);
}

TEST_F(HotPlugTest, LetsTheBlackoutFollow) {
    ServerView view;
    const auto covers = [&view] {
        std::vector<X11Rectangle> found;
        for (const auto& overlay : view.named("Vantrel overlay")) {
            if (overlay.viewable) found.push_back(overlay.frame);
        }
        return found;
    };
    using Covers = std::vector<X11Rectangle>;
    auto blackout = std::make_shared<BlackoutOverlayManager>(computer->screens, computer->overlays,
                                                             computer->mainRunLoop, computer->log);
    plug();
    expectToldOnce();
    blackout->activate(computer->screens.mainScreen());
    EXPECT_EQ(covers(), (Covers{{1440, 0, 1280, 720}}));
    // Moved, mirrored, unplugged and plugged in again.
    run("--output DUMMY1 --below DUMMY0");
    EXPECT_TRUE(waitUntil([&] { return covers() == Covers{{0, 900, 1280, 720}}; }));
    run("--output DUMMY1 --mode 1440x900 --same-as DUMMY0");
    EXPECT_TRUE(waitUntil([&] { return covers().empty(); }));
    unplug();
    turnFor(0.6);
    EXPECT_TRUE(covers().empty());
    plug();
    EXPECT_TRUE(waitUntil([&] { return covers() == Covers{{1440, 0, 1280, 720}}; }));
    // The display that was not covered is removed.
    run("--output DUMMY0 --off");
    EXPECT_TRUE(waitUntil([&] { return covers().empty(); }));
    EXPECT_EQ(computer->screens.screens().size(), 1U);
    run("--output DUMMY0 --mode 1440x900 --left-of DUMMY1");
    EXPECT_TRUE(waitUntil([&] { return covers().size() == 1; }));
    blackout->deactivate();
    EXPECT_TRUE(view.named("Vantrel overlay").empty());
}

}  // namespace
}  // namespace vantrel::linuxdesktop
