#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/x11/MonitorLayout.h"

namespace vantrel::linuxdesktop {
namespace {

class ScreensTest : public DesktopTest {
  protected:
    // Two monitors side by side, the left one 600 high and the right one 500.
    void split() { layout.set({left, right}); }

    std::optional<Screen> named(const std::string& name) const {
        for (const Screen& screen : computer->screens.screens()) {
            if (screen.localizedName == name) return screen;
        }
        return std::nullopt;
    }

    const X11Monitor left{"VTEST-A", {0, 0, 800, 600}};
    const X11Monitor right{"VTEST-B", {800, 0, 400, 500}};
    MonitorLayout layout;
};

TEST_F(ScreensTest, CountsFromTheBottomLeftOfThePrimaryDisplay) {
    split();
    const auto first = named("VTEST-A");
    const auto second = named("VTEST-B");
    ASSERT_TRUE(first && second);
    EXPECT_EQ(computer->screens.screens().front(), *first);
    EXPECT_EQ(first->frame, (Rect{{0, 0}, {800, 600}}));
    // Both have the same top edge, so the lower one begins a hundred points higher.
    EXPECT_EQ(second->frame, (Rect{{800, 100}, {400, 500}}));
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
    // In points from the bottom left of the primary: within the right display.
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
    layout.set({left});
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

TEST_F(ScreensTest, DoesNotListAMirror) {
    layout.set({left, right, {"VTEST-C", {800, 0, 400, 500}}, {"VTEST-D", {100, 100, 320, 240}}});
    EXPECT_TRUE(waitUntil([this] { return computer->screens.screens().size() == 2; }));
    EXPECT_TRUE(named("VTEST-A") && named("VTEST-B"));
}

TEST_F(ScreensTest, HasTheLargerDisplayAsPrimaryWhereThePrimaryMirrorsAPartOfIt) {
    layout.set({{"VTEST-C", {0, 0, 320, 240}}, right, left});
    EXPECT_TRUE(waitUntil([this] { return computer->screens.screens().size() == 2; }));
    EXPECT_EQ(computer->screens.screens().front().localizedName, "VTEST-A");
    EXPECT_EQ(computer->screens.screens().front().frame, (Rect{{0, 0}, {800, 600}}));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
