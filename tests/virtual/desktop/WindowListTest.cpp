#include <algorithm>
#include <string>
#include <vector>

#include "tests/virtual/desktop/DesktopTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

class WindowListTest : public DesktopTest {
  protected:
    std::vector<WindowEntry> list(WindowListOption option = WindowListOption::all) {
        const auto copied = computer().windowList.copy(option);
        EXPECT_TRUE(copied.has_value());
        return copied.value_or(std::vector<WindowEntry>());
    }
    Lines titles(WindowListOption option = WindowListOption::all) {
        Lines found;
        for (const auto& entry : list(option)) found.push_back(entry.name.value_or("?"));
        return found;
    }
};

TEST_F(WindowListTest, TellsEverythingOfAWindow) {
    ASSERT_EQ(1U, list().size());
    const WindowEntry entry = list().front();
    EXPECT_EQ(window, entry.number);
    EXPECT_EQ(process, entry.ownerPID);
    EXPECT_EQ("Google Chrome", entry.ownerName);
    EXPECT_EQ("Lezione", entry.name);
    EXPECT_EQ(0, entry.layer);
    EXPECT_EQ((Rect{{100, 100}, {800, 600}}), entry.bounds);
    EXPECT_EQ(true, entry.isOnscreen);
}

TEST_F(WindowListTest, GoesFromFrontToBackAndLeavesTheOnScreenFlagOutWhenItIsFalse) {
    const auto second = mac().applications().openWindow(process, {"Davanti"});
    NewWindow menu{"Menu", {{0, 0}, {1440, 24}}};
    menu.layer = 25;
    mac().applications().openWindow(process, menu);
    EXPECT_EQ((Lines{"Menu", "Davanti", "Lezione"}), titles());
    mac().desktop().raise(window);
    EXPECT_EQ((Lines{"Lezione", "Menu", "Davanti"}), titles());
    mac().desktop().setMinimised(second, true);
    EXPECT_EQ((Lines{"Lezione", "Menu"}), titles(WindowListOption::onScreenOnly));
    EXPECT_EQ(std::nullopt, list().back().isOnscreen);
    EXPECT_EQ(25, list().at(1).layer);
    EXPECT_EQ(0, list().at(1).bounds->origin.y);
}

TEST_F(WindowListTest, LacksWhatIsWithheld) {
    mac().applications().openWindow(process, {"Altra"});
    mac().windowList().setScreenRecordingAllowed(false);
    EXPECT_EQ((Lines{"?", "?"}), titles());
    mac().windowList().withhold(WindowKey::number);
    mac().windowList().withhold(WindowKey::bounds, process);
    mac().windowList().withhold(WindowKey::layer, 77);
    EXPECT_EQ(std::nullopt, list().front().number);
    EXPECT_EQ(std::nullopt, list().front().bounds);
    EXPECT_EQ(0, list().front().layer);
    mac().windowList().withhold(WindowKey::isOnscreen);
    EXPECT_EQ(2U, list(WindowListOption::onScreenOnly).size()) << "the filter still knows";
    mac().windowList().withholdNothing();
    EXPECT_TRUE(list().front().number);
    mac().windowList().setFailing(true);
    EXPECT_EQ(std::nullopt, computer().windowList.copy(WindowListOption::all));
}

TEST_F(WindowListTest, HoldsTheClientsOwnVisibleWindows) {
    std::unique_ptr<Window> own;
    mac().onMain([&] {
        own = computer().windows.makeWindow({{{100, 200}, {380, 480}}, windowTitled, "Vantrel", false, {}}, {});
    });
    EXPECT_EQ(Lines{"Lezione"}, titles());
    mac().onMain([&] {
        own->makeKeyAndOrderFront();
        computer().application.activate();
    });
    EXPECT_EQ((Lines{"Vantrel", "Lezione"}), titles());
    EXPECT_EQ(mac().applications().ownProcess(), list().front().ownerPID);
    EXPECT_EQ((Rect{{100, 220}, {380, 480}}), list().front().bounds);
    mac().processes().find(process)->comeToFront();
    EXPECT_EQ((Lines{"Lezione", "Vantrel"}), titles());
    mac().desktop().setFullScreen(window, true);
    settle();
    EXPECT_EQ(Lines{"Lezione"}, titles(WindowListOption::onScreenOnly));
    mac().onMain([&] { own.reset(); });
}

}  // namespace
}  // namespace vantrel::virtualmac
