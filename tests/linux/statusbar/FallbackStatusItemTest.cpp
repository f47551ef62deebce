#include <QApplication>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QWidget>
#include <optional>

#include "lockdown/BlackoutOverlayManager.h"
#include "platform/linux/statusbar/FallbackStatusItem.h"
#include "platform/linux/x11/X11Windows.h"
#include "tests/linux/statusbar/DesktopTray.h"
#include "tests/linux/support/Builders.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/x11/ForeignWindow.h"
#include "tests/linux/x11/MonitorLayout.h"
#include "tests/linux/x11/ServerView.h"
#include "tests/linux/x11/TestPointer.h"

namespace vantrel::linuxdesktop {
namespace {

struct Seen {
    std::string title;
    std::vector<std::string> menu;
    bool removed = false;
};

class SeenStatusItem final : public RemovableStatusItem {
  public:
    explicit SeenStatusItem(Seen& seen) : seen_(seen) {}
    void setButtonTitle(const std::string& title) override { seen_.title = title; }
    void setMenu(const Menu& menu) override {
        seen_.menu.clear();
        for (const MenuItem& item : menu.items) seen_.menu.push_back(item.title);
    }
    void remove() override { seen_.removed = true; }

  private:
    Seen& seen_;
};

class FallbackStatusItemTest : public DesktopTest {
  protected:
    std::unique_ptr<FallbackStatusItem> make() {
        return std::make_unique<FallbackStatusItem>(
            std::make_unique<SeenStatusItem>(tray), [this] { return available; },
            [this] {
                ++made;
                return std::make_unique<SeenStatusItem>(strip);
            });
    }

    static Menu menu(const std::string& title) {
        Menu made;
        made.items.push_back(informationItem(title));
        return made;
    }

    static bool stripIsShown() {
        for (const QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == "statusStrip" && widget->isVisible()) return true;
        }
        return false;
    }

    Seen tray;
    Seen strip;
    bool available = true;
    int made = 0;
};

TEST_F(FallbackStatusItemTest, StaysInTheTrayWhileThereIsOne) {
    const auto item = make();
    item->setButtonTitle("Titolo");
    turnFor(1.3);
    EXPECT_EQ(tray.title, "Titolo");
    EXPECT_FALSE(tray.removed);
    EXPECT_EQ(made, 0);
}

TEST_F(FallbackStatusItemTest, MovesOnceWithTitleAndMenuWhenTheTrayEnds) {
    const auto item = make();
    item->setButtonTitle("Titolo");
    item->setMenu(menu("Termina sessione"));
    available = false;
    ASSERT_TRUE(waitUntil([this] { return made == 1; }));
    EXPECT_TRUE(tray.removed);
    EXPECT_EQ(strip.title, "Titolo");
    EXPECT_EQ(strip.menu, std::vector<std::string>{"Termina sessione"});
    item->setButtonTitle("Altro");
    EXPECT_EQ(strip.title, "Altro");
    turnFor(1.3);
    EXPECT_EQ(made, 1);
    item->remove();
    EXPECT_TRUE(strip.removed);
}

TEST_F(FallbackStatusItemTest, DoesNotComeBackOnceRemoved) {
    const auto item = make();
    item->remove();
    EXPECT_TRUE(tray.removed);
    available = false;
    turnFor(1.3);
    EXPECT_EQ(made, 0);
}

/// A desktop with a tray.
class TrayTest : public FallbackStatusItemTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        if (!computer) return;
        if (QSystemTrayIcon::isSystemTrayAvailable()) GTEST_SKIP() << "this desktop has a tray of its own";
        desktopTray.emplace();
        ASSERT_TRUE(waitUntil([] { return QSystemTrayIcon::isSystemTrayAvailable(); }));
    }

    void TearDown() override {
        item.reset();
        desktopTray.reset();
        EXPECT_TRUE(waitUntil([] { return !QSystemTrayIcon::isSystemTrayAvailable(); }));
        DesktopTest::TearDown();
    }

    void install() {
        item = computer->statusBar.statusItem(variableStatusItemLength);
        item->setButtonTitle("Titolo");
        Menu made;
        made.items.push_back(targetItem("Termina sessione", [this] { ++chosen; }));
        item->setMenu(made);
    }

    bool isManaged(const ForeignWindow& window) {
        return waitUntil([&] { return X11Windows(view.connection()).active() == window.id(); });
    }

    // Whether the strip is the topmost window at its place, and its menu ends the session.
    bool endsTheSession(double secondsToChoose = 0.2) {
        QRect place;
        for (const QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == "statusStrip" && widget->isVisible()) place = widget->geometry();
        }
        const QPoint middle = place.center();
        const bool seen = waitUntil([&] {
            const auto top = view.topmostAt(middle.x(), middle.y());
            return top && top->name == "Vantrel status";
        });
        if (place.isEmpty() || !seen) return false;
        const auto openMenu = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
        pointer.clickAt(middle.x(), middle.y());
        if (!waitUntil([&] { return openMenu() != nullptr; })) return false;
        turnFor(secondsToChoose);
        if (openMenu() == nullptr) return false;
        const QPoint entry =
            openMenu()->mapToGlobal(openMenu()->actionGeometry(openMenu()->actions().front()).center());
        pointer.clickAt(entry.x(), entry.y());
        const int before = chosen;
        return waitUntil([&] { return chosen == before + 1; });
    }

    ServerView view;
    TestPointer pointer;
    std::unique_ptr<StatusItem> item;
    int chosen = 0;
    std::optional<DesktopTray> desktopTray;
};

TEST_F(TrayTest, ShowsTheStripOverAFullScreenWindowWhenThePointerTouchesTheTopEdge) {
    install();
    turnFor(0.1);
    EXPECT_FALSE(stripIsShown());
    {
        ForeignWindow browser("Lezione", {100, 100, 500, 400});
        X11Windows windows(browser.connection());
        ASSERT_TRUE(isManaged(browser));
        pointer.moveTo(300, 400);
        browser.changeState(true, "_NET_WM_STATE_FULLSCREEN");
        ASSERT_TRUE(waitUntil([&] {
            const auto frame = windows.frame(browser.id());
            return frame && frame->x == 0 && frame->y == 0;
        }));
        turnFor(0.2);
        EXPECT_FALSE(stripIsShown());
        pointer.moveTo(300, 0);
        EXPECT_TRUE(waitUntil([] { return stripIsShown(); }));
        EXPECT_TRUE(endsTheSession());
    }
    EXPECT_TRUE(waitUntil([] { return !stripIsShown(); }));
}

TEST_F(TrayTest, ShowsTheStripWhenTheTrayIsGone) {
    install();
    turnFor(0.1);
    EXPECT_FALSE(stripIsShown());
    desktopTray.reset();
    EXPECT_TRUE(waitUntil([] { return stripIsShown(); }));
    computer->statusBar.removeStatusItem(*item);
    EXPECT_FALSE(stripIsShown());
}

// The meeting is on the second display, so the covers lie over the primary one and the panel there.
TEST_F(TrayTest, ShowsTheStripOverTheCoverOfThePrimaryDisplay) {
    MonitorLayout layout;
    layout.set({{"VTEST-A", {0, 0, 800, 700}}, {"VTEST-B", {800, 0, 700, 600}}});
    pointer.moveTo(400, 400);
    // Replaced covers close an open menu. That must not happen in the middle of the test.
    turnFor(0.5);
    ForeignWindow browser("Lezione", {900, 100, 400, 300});
    ASSERT_TRUE(isManaged(browser));
    for (const bool itemFirst : {false, true}) {
        const auto blackout = std::make_shared<BlackoutOverlayManager>(computer->screens, computer->overlays,
                                                                       computer->mainRunLoop, computer->log);
        if (itemFirst) install();
        blackout->activate(computer->screens.mainScreen());
        if (!itemFirst) install();
        ASSERT_TRUE(waitUntil([&] {
            const auto top = view.topmostAt(100, 5);
            return top && top->name == "Vantrel overlay";
        }));
        EXPECT_TRUE(waitUntil([] { return stripIsShown(); }));
        EXPECT_TRUE(endsTheSession());
        // Still in front after the covers have been put on top again, which closes no menu.
        EXPECT_TRUE(endsTheSession(3.3));
        EXPECT_TRUE(endsTheSession());
        blackout->deactivate();
        EXPECT_TRUE(waitUntil([] { return !stripIsShown(); }));
        item.reset();
    }
}

// The panel may be on any display.
TEST_F(TrayTest, ShowsTheStripWhileAnotherDisplayIsCovered) {
    MonitorLayout layout;
    layout.set({{"VTEST-A", {0, 0, 800, 700}}, {"VTEST-B", {800, 0, 700, 600}}});
    pointer.moveTo(400, 400);
    // Replaced covers close an open menu. That must not happen in the middle of the test.
    turnFor(0.5);
    ForeignWindow browser("Lezione", {100, 100, 400, 300});
    ASSERT_TRUE(isManaged(browser));
    install();
    auto overlay = computer->overlays.makeOverlay({{{800, 100}, {700, 600}}, 1000, 0, {}});
    turnFor(0.1);
    EXPECT_FALSE(stripIsShown());
    overlay->orderFrontRegardless();
    EXPECT_TRUE(waitUntil([] { return stripIsShown(); }));
    EXPECT_TRUE(endsTheSession());
    // Over the full-screen window the strip waits at the edge.
    pointer.moveTo(400, 400);
    browser.changeState(true, "_NET_WM_STATE_FULLSCREEN");
    EXPECT_TRUE(waitUntil([] { return !stripIsShown(); }));
    pointer.moveTo(400, 0);
    EXPECT_TRUE(waitUntil([] { return stripIsShown(); }));
    EXPECT_TRUE(endsTheSession());
    pointer.moveTo(400, 400);
    overlay->close();
    EXPECT_TRUE(waitUntil([] { return !stripIsShown(); }));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
