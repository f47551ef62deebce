#include <cstdlib>

#include "DesktopTest.h"

namespace vantrel::linuxdesktop {
namespace {

// Changes the display's monitors, which then do not come back as they were: the display must be the tests' own.
class ScreensTest : public DesktopTest {
  protected:
    void TearDown() override {
        run("xrandr --delmonitor VTEST-A 2>/dev/null");
        run("xrandr --delmonitor VTEST-B 2>/dev/null");
        DesktopTest::TearDown();
    }

    // Two monitors side by side, the left one 600 high and the right one 500; the whole screen's output goes to the
    // left one.
    static void split() {
        run("xrandr --setmonitor '*VTEST-A' 800/200x600/150+0+0 screen");
        run("xrandr --setmonitor VTEST-B 400/100x500/125+800+0 none");
    }

    static void run(const std::string& command) { [[maybe_unused]] const int status = std::system(command.c_str()); }

    std::optional<Screen> named(const std::string& name) const {
        for (const Screen& screen : computer->screens.screens()) {
            if (screen.localizedName == name) return screen;
        }
        return std::nullopt;
    }
};

TEST_F(ScreensTest, CountsFromTheBottomLeftOfThePrimaryDisplay) {
    split();
    const auto left = named("VTEST-A");
    const auto right = named("VTEST-B");
    ASSERT_TRUE(left && right);
    EXPECT_EQ(computer->screens.screens().front(), *left);
    EXPECT_EQ(left->frame, (Rect{{0, 0}, {800, 600}}));
    // Both hang from the same top edge, so the lower one begins a hundred points higher.
    EXPECT_EQ(right->frame, (Rect{{800, 100}, {400, 500}}));
    EXPECT_TRUE(computer->screens.screensHaveSeparateSpaces());
}

TEST_F(ScreensTest, HasThePrimaryAsMainScreenWithoutAFocusedWindow) {
    split();
    const auto main = computer->screens.mainScreen();
    ASSERT_TRUE(main);
    EXPECT_EQ(main->localizedName, "VTEST-A");
}

TEST_F(ScreensTest, HasTheScreenOfTheFocusedWindowAsMainScreen) {
    split();
    WindowDescription description;
    // Points from the bottom left of the primary: within the right display.
    description.contentRect = {{850, 200}, {200, 150}};
    description.styleMask = windowTitled;
    const auto window = computer->windows.makeWindow(description, [](std::string_view) {});
    window->makeKeyAndOrderFront();
    EXPECT_TRUE(waitUntil([this] {
        const auto main = computer->screens.mainScreen();
        return main && main->localizedName == "VTEST-B";
    }));
}

TEST_F(ScreensTest, TellsOfABurstOfChangesOnceThroughTheMainQueue) {
    int told = 0;
    const auto observation = computer->screens.observeScreenParametersDidChange([&told] { ++told; });
    split();
    ASSERT_TRUE(waitUntil([&told] { return told > 0; }));
    turnFor(0.6);
    EXPECT_EQ(told, 1);
    run("xrandr --delmonitor VTEST-B");
    EXPECT_TRUE(waitUntil([&told] { return told == 2; }));
}

TEST_F(ScreensTest, TellsNobodyWhoHasStoppedObserving) {
    int told = 0;
    int toldOther = 0;
    auto observation = computer->screens.observeScreenParametersDidChange([&told] { ++told; });
    const auto other = computer->screens.observeScreenParametersDidChange([&toldOther] { ++toldOther; });
    observation.reset();
    split();
    ASSERT_TRUE(waitUntil([&toldOther] { return toldOther > 0; }));
    turnFor(0.1);
    EXPECT_EQ(told, 0);
}

}  // namespace
}  // namespace vantrel::linuxdesktop
