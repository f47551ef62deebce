#include <gtest/gtest.h>

#include "lockdown/BrowserWindows.h"
#include "tests/lockdown/NextNumber.h"

namespace vantrel {
namespace {

constexpr ProcessIdentifier browser = 600;
constexpr Size screenSize{1000, 500};

WindowEntry window(double width, double height) {
    WindowEntry entry;
    entry.ownerPID = browser;
    entry.layer = 0;
    entry.bounds = Rect{{0, 0}, {width, height}};
    entry.isOnscreen = true;
    return entry;
}

bool isLarge(const WindowEntry& entry) {
    EXPECT_EQ(hasLargeWindow({entry}, browser, screenSize), hasLargeWindowOnScreen({entry}, browser, screenSize));
    return hasLargeWindow({entry}, browser, screenSize);
}

bool isThere(const WindowEntry& entry) {
    return hasWindowAtAll({entry}, browser);
}

TEST(BrowserWindows, AreLargeAboveThreeFifthsOfTheScreen) {
    EXPECT_TRUE(isLarge(window(justAbove(600), justAbove(300))));
    EXPECT_TRUE(isLarge(window(1000, 500)));
    EXPECT_FALSE(isLarge(window(600, 500)));
    EXPECT_FALSE(isLarge(window(1000, 300)));
    EXPECT_FALSE(isLarge(window(justBelow(600), 500)));
    EXPECT_FALSE(isLarge(window(1000, justBelow(300))));
}

TEST(BrowserWindows, AreThereAbove200By100Points) {
    EXPECT_TRUE(isThere(window(justAbove(200), justAbove(100))));
    EXPECT_FALSE(isThere(window(200, justAbove(100))));
    EXPECT_FALSE(isThere(window(justAbove(200), 100)));
    EXPECT_FALSE(isThere(window(justBelow(200), 500)));
    EXPECT_FALSE(isThere(window(500, justBelow(100))));
}

TEST(BrowserWindows, CountOnlyInLayerZero) {
    auto entry = window(1000, 500);
    entry.layer = 25;
    EXPECT_FALSE(isLarge(entry));
    EXPECT_FALSE(isThere(entry));
}

TEST(BrowserWindows, CountOnlyForTheBrowsersProcess) {
    auto entry = window(1000, 500);
    entry.ownerPID = browser + 1;
    EXPECT_FALSE(isLarge(entry));
    EXPECT_FALSE(isThere(entry));
}

TEST(BrowserWindows, DoNotCountWithoutOwnerLayerOrBounds) {
    for (const auto forget :
         {+[](WindowEntry& entry) { entry.ownerPID.reset(); }, +[](WindowEntry& entry) { entry.layer.reset(); },
          +[](WindowEntry& entry) { entry.bounds.reset(); }}) {
        auto entry = window(1000, 500);
        forget(entry);
        EXPECT_FALSE(isLarge(entry));
        EXPECT_FALSE(isThere(entry));
    }
}

TEST(BrowserWindows, NeedNeitherANumberNorATitle) {
    EXPECT_TRUE(isLarge(window(1000, 500)));
}

TEST(BrowserWindows, OnAnotherSpaceAreLargeButNotOnTheScreen) {
    auto entry = window(1000, 500);
    for (const std::optional<bool> flag : {std::optional<bool>(false), std::optional<bool>()}) {
        entry.isOnscreen = flag;
        EXPECT_TRUE(hasLargeWindow({entry}, browser, screenSize));
        EXPECT_FALSE(hasLargeWindowOnScreen({entry}, browser, screenSize));
        EXPECT_TRUE(isThere(entry));
    }
}

TEST(BrowserWindows, AreLookedForInTheWholeList) {
    auto foreign = window(1000, 500);
    foreign.ownerPID = 1;
    const std::vector<WindowEntry> windows{foreign, window(10, 10), window(1000, 500), foreign};
    EXPECT_TRUE(hasLargeWindow(windows, browser, screenSize));
    EXPECT_TRUE(hasLargeWindowOnScreen(windows, browser, screenSize));
    EXPECT_TRUE(hasWindowAtAll(windows, browser));
    EXPECT_FALSE(hasLargeWindow({}, browser, screenSize));
    EXPECT_FALSE(hasLargeWindowOnScreen({}, browser, screenSize));
    EXPECT_FALSE(hasWindowAtAll({}, browser));
}

}  // namespace
}  // namespace vantrel
