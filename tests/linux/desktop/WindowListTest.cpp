#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

#include "platform/linux/x11/X11Desktops.h"
#include "platform/linux/x11/X11WindowFacts.h"
#include "platform/linux/x11/X11Windows.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/x11/ForeignWindow.h"

namespace vantrel::linuxdesktop {
namespace {

class WindowListTest : public DesktopTest {
  protected:
    std::optional<WindowEntry> entry(const ForeignWindow& window,
                                     WindowListOption option = WindowListOption::all) const {
        const auto list = computer->windowList.copy(option);
        if (!list) return std::nullopt;
        for (const WindowEntry& entry : *list) {
            if (entry.number == window.id()) return entry;
        }
        return std::nullopt;
    }

    // Without the event loop, so it works on any thread.
    static bool waitUntilManaged(ForeignWindow& window) {
        X11Windows windows(window.connection());
        for (int waited = 0; waited < 5000; ++waited) {
            const auto managed = windows.frontToBack();
            if (std::find(managed.begin(), managed.end(), window.id()) != managed.end()) return true;
            usleep(200);
        }
        return false;
    }

    bool isOnScreen(const ForeignWindow& window) const {
        return entry(window, WindowListOption::onScreenOnly).has_value();
    }
};

TEST_F(WindowListTest, TellsOfAWindowWithItsDecorations) {
    ForeignWindow window("Lezione – perché?", {300, 200, 500, 400});
    ASSERT_TRUE(waitUntil([&] { return isOnScreen(window); }));
    const auto found = entry(window);
    EXPECT_EQ(found->ownerPID, getpid());
    EXPECT_EQ(found->name, "Lezione – perché?");
    EXPECT_EQ(found->layer, 0);
    EXPECT_EQ(found->isOnscreen, true);
    const auto own = computer->runningApplications.withProcessIdentifier(getpid());
    ASSERT_TRUE(own);
    EXPECT_EQ(found->ownerName, own->localizedName());
    const auto extents = window.connection().values(window.id(), "_NET_FRAME_EXTENTS");
    ASSERT_EQ(extents.size(), 4U);
    ASSERT_TRUE(found->bounds);
    EXPECT_EQ(found->bounds->size.width, 500.0 + extents[0] + extents[1]);
    EXPECT_EQ(found->bounds->size.height, 400.0 + extents[2] + extents[3]);
    EXPECT_GT(extents[2], 5U) << "this window manager draws no title bar";
}

TEST_F(WindowListTest, GoesFromFrontToBack) {
    ForeignWindow below("sotto", {100, 100, 300, 200});
    ASSERT_TRUE(waitUntil([&] { return isOnScreen(below); }));
    ForeignWindow above("sopra", {150, 150, 300, 200});
    ASSERT_TRUE(waitUntil([&] { return isOnScreen(above); }));
    const auto position = [&](const ForeignWindow& window) {
        const auto list = computer->windowList.copy(WindowListOption::all);
        return std::find_if(list->begin(), list->end(), [&](const auto& one) { return one.number == window.id(); }) -
               list->begin();
    };
    // The window manager tells of the new order after it has shown the window.
    EXPECT_TRUE(waitUntil([&] { return position(above) < position(below); }));
    X11Windows(below.connection()).activate(below.id());
    EXPECT_TRUE(waitUntil([&] { return position(below) < position(above); }));
}

TEST_F(WindowListTest, HasDocksAndTheDesktopOnOtherLayers) {
    ForeignWindow dock("dock", {0, 0, 100, 30}, "DOCK");
    ForeignWindow picture("desktop", {0, 0, 300, 200}, "DESKTOP");
    ForeignWindow panel("pannello", {300, 300, 100, 100}, "UTILITY");
    ASSERT_TRUE(waitUntil([&] { return isOnScreen(dock) && isOnScreen(picture) && isOnScreen(panel); }));
    EXPECT_GT(entry(dock)->layer, 0);
    EXPECT_LT(entry(picture)->layer, 0);
    EXPECT_EQ(entry(panel)->layer, 0);
}

TEST_F(WindowListTest, DoesNotCallAMinimisedWindowOnScreen) {
    ForeignWindow window("ridotta", {300, 200, 500, 400});
    ASSERT_TRUE(waitUntil([&] { return isOnScreen(window); }));
    window.minimize();
    ASSERT_TRUE(waitUntil([&] { return !isOnScreen(window); }));
    const auto found = entry(window);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->isOnscreen, std::nullopt);
}

TEST_F(WindowListTest, DoesNotCallAWindowOfAnotherDesktopOnScreen) {
    ForeignWindow window("altrove", {300, 200, 500, 400});
    ASSERT_TRUE(waitUntil([&] { return isOnScreen(window); }));
    X11Desktops desktops(window.connection());
    const auto current = desktops.current();
    ASSERT_TRUE(current);
    desktops.move(window.id(), *current == 0 ? 1 : 0);
    ASSERT_TRUE(waitUntil([&] { return !isOnScreen(window); }));
    EXPECT_EQ(entry(window)->isOnscreen, std::nullopt);
    desktops.move(window.id(), X11WindowFacts::allDesktops);
    EXPECT_TRUE(waitUntil([&] { return isOnScreen(window); }));
}

TEST_F(WindowListTest, IsOfNowWhateverThePreviousLookFound) {
    const auto numbers = [this] {
        std::vector<std::int64_t> found;
        const auto list = computer->windowList.copy(WindowListOption::all);
        if (!list) return found;
        for (const WindowEntry& one : *list) found.push_back(one.number.value_or(0));
        std::sort(found.begin(), found.end());
        return found;
    };
    const auto expect = [&](std::vector<std::int64_t> wanted) {
        std::sort(wanted.begin(), wanted.end());
        EXPECT_TRUE(waitUntil([&] { return numbers() == wanted; }));
        EXPECT_EQ(numbers(), wanted) << "the same once more";
    };
    auto first = std::make_unique<ForeignWindow>("prima", X11Rectangle{100, 100, 300, 200});
    expect({first->id()});
    ForeignWindow second("seconda", {150, 150, 300, 200});
    expect({first->id(), second.id()});
    X11Windows(second.connection()).resize(second.id(), 420, 310);
    EXPECT_TRUE(waitUntil([&] { return entry(second)->bounds->size.width >= 420; }));
    first.reset();
    expect({second.id()});
    ForeignWindow third("terza", {50, 50, 200, 100});
    expect({second.id(), third.id()});
    EXPECT_EQ(entry(third)->name, "terza");
    EXPECT_EQ(entry(third)->ownerPID, getpid());
}

TEST_F(WindowListTest, LeavesOutWindowsThatDieMeanwhile) {
    ForeignWindow stays("resta", {300, 200, 500, 400});
    ASSERT_TRUE(waitUntil([&] { return isOnScreen(stays); }));
    std::atomic<bool> done = false;
    std::atomic<int> deaths = 0;
    std::thread others([&] {
        while (!done) {
            ForeignWindow one("uno", {10, 10, 50, 50});
            ForeignWindow two("due", {80, 10, 50, 50});
            // A window that dies before openbox manages it would stay on openbox's list for ever.
            if (waitUntilManaged(one) && waitUntilManaged(two)) deaths += 2;
        }
    });
    for (int i = 0; i < 300; ++i) {
        const auto list = computer->windowList.copy(WindowListOption::all);
        ASSERT_TRUE(list);
        EXPECT_TRUE(std::any_of(list->begin(), list->end(), [&](const auto& one) { return one.number == stays.id(); }));
    }
    done = true;
    others.join();
    EXPECT_GT(deaths, 10);
    EXPECT_TRUE(waitUntil([&] {
        return X11Windows(stays.connection()).ofProcess(getpid()) == std::vector{stays.id()};
    })) << "the window manager forgets them";
}

}  // namespace
}  // namespace vantrel::linuxdesktop
