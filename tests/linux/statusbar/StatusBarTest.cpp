#include <QApplication>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTest>

#include "platform/linux/keyboard/KeyPositions.h"
#include "platform/linux/x11/X11Desktops.h"
#include "platform/linux/x11/X11Windows.h"
#include "tests/linux/support/Builders.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/x11/ForeignWindow.h"
#include "tests/linux/x11/MonitorLayout.h"
#include "tests/linux/x11/ServerView.h"
#include "tests/linux/x11/TestKeyboard.h"
#include "tests/linux/x11/TestPointer.h"

namespace vantrel::linuxdesktop {
namespace {

class StatusBarTest : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        if (computer && QSystemTrayIcon::isSystemTrayAvailable()) GTEST_SKIP() << "this desktop has a tray of its own";
    }

    std::unique_ptr<StatusItem> install() {
        auto item = computer->statusBar.statusItem(variableStatusItemLength);
        item->setButtonTitle("🔒 Vantrel");
        Menu menu;
        menu.items.push_back(informationItem("Corso [ABC]"));
        menu.items.push_back(MenuItem::separator());
        menu.items.push_back(targetItem("Termina sessione", [this] { ++chosen; }));
        item->setMenu(menu);
        return item;
    }

    static QWidget* strip() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->windowTitle() == "Vantrel status" && widget->isVisible()) return widget;
        }
        return nullptr;
    }

    static QMenu* openMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

    bool inFrontAt(const QPoint& place) {
        const auto top = view.topmostAt(place.x(), place.y());
        return top && top->name == "Vantrel status";
    }

    std::unique_ptr<ForeignWindow> fullScreenWindow() {
        auto window = std::make_unique<ForeignWindow>("Lezione", X11Rectangle{100, 100, 500, 400});
        X11Windows windows(view.connection());
        EXPECT_TRUE(waitUntil([&] { return windows.active() == window->id(); }));
        window->changeState(true, "_NET_WM_STATE_FULLSCREEN");
        const auto display = computer->screens.screens().front().frame.size;
        EXPECT_TRUE(waitUntil([&] {
            const auto frame = windows.frame(window->id());
            return frame && frame->width >= static_cast<int>(display.width) && frame->y == 0;
        }));
        return window;
    }

    ServerView view;
    TestPointer pointer;
    int chosen = 0;
};

TEST_F(StatusBarTest, HangsFromTheTopEdgeOfThePrimaryDisplay) {
    const auto item = install();
    ASSERT_TRUE(strip());
    EXPECT_EQ(strip()->y(), 0);
    EXPECT_GT(strip()->width(), 60);
    const double width = computer->screens.screens().front().frame.size.width;
    EXPECT_GE(strip()->x(), width / 2);
    EXPECT_LE(strip()->geometry().right(), width);
}

TEST_F(StatusBarTest, OpensItsMenuBelowAndRunsTheChosenItem) {
    const auto item = install();
    QTest::mouseClick(strip(), Qt::LeftButton);
    ASSERT_TRUE(waitUntil([] { return openMenu() != nullptr; }));
    EXPECT_GE(openMenu()->y(), strip()->geometry().bottom());
    EXPECT_FALSE(openMenu()->actions().at(0)->isEnabled());
    QTest::keyClick(openMenu(), Qt::Key_Down);
    QTest::keyClick(openMenu(), Qt::Key_Return);
    EXPECT_EQ(openMenu(), nullptr);
    EXPECT_TRUE(waitUntil([this] { return chosen == 1; }));
}

TEST_F(StatusBarTest, ControlF8OpensItsMenuOverAFullScreenWindow) {
    const auto item = install();
    const auto window = fullScreenWindow();
    ASSERT_TRUE(waitUntil([] { return strip() == nullptr; }));
    TestKeyboard keyboard;
    const xcb_keycode_t f8 = TestKeyboard::position(100);
    keyboard.type(f8);
    keyboard.type(f8, shiftFlag | controlFlag);
    keyboard.type(f8, optionFlag | controlFlag);
    turnFor(0.3);
    EXPECT_EQ(openMenu(), nullptr) << "with Control alone";
    keyboard.type(f8, controlFlag);
    ASSERT_TRUE(waitUntil([] { return openMenu() != nullptr && strip() != nullptr; }));
    ASSERT_TRUE(waitUntil([] { return openMenu()->activeAction() != nullptr; }));
    EXPECT_EQ(openMenu()->activeAction()->text(), "Termina sessione");
    keyboard.type(TestKeyboard::position(36));
    EXPECT_TRUE(waitUntil([this] { return chosen == 1; }));
    EXPECT_TRUE(waitUntil([] { return strip() == nullptr; })) << "it hides again with its menu";
}

TEST_F(StatusBarTest, ControlF8OpensItsMenuThroughAKeyboardTap) {
    const auto item = install();
    const auto tap = computer->keyboardTaps.create([](const KeyEvent&) noexcept { return std::string_view(); }, {});
    ASSERT_TRUE(tap);
    TestKeyboard keyboard;
    keyboard.type(TestKeyboard::position(100), controlFlag);
    ASSERT_TRUE(waitUntil([] { return openMenu() != nullptr; }));
    keyboard.type(TestKeyboard::position(53));
    EXPECT_TRUE(waitUntil([] { return openMenu() == nullptr; })) << "the menu has the keyboard";
    EXPECT_EQ(chosen, 0);
    computer->statusBar.removeStatusItem(*item);
    keyboard.type(TestKeyboard::position(100), controlFlag);
    turnFor(0.3);
    EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(StatusBarTest, AChosenItemDoesNothingOnceItIsGone) {
    auto item = install();
    QTest::mouseClick(strip(), Qt::LeftButton);
    ASSERT_TRUE(waitUntil([] { return openMenu() != nullptr; }));
    QTest::keyClick(openMenu(), Qt::Key_Down);
    QTest::keyClick(openMenu(), Qt::Key_Return);
    ASSERT_EQ(openMenu(), nullptr);
    item.reset();
    QTest::qWait(200);
    EXPECT_EQ(chosen, 0);
}

TEST_F(StatusBarTest, LeavesTheScreenWhenRemovedAndWhenDestroyed) {
    auto item = install();
    ASSERT_TRUE(strip());
    computer->statusBar.removeStatusItem(*item);
    EXPECT_FALSE(strip());
    item = install();
    ASSERT_TRUE(strip());
    item.reset();
    EXPECT_FALSE(strip());
}

TEST_F(StatusBarTest, MayBeDestroyedByItsOwnItem) {
    auto item = computer->statusBar.statusItem(variableStatusItemLength);
    item->setButtonTitle("x");
    Menu menu;
    menu.items.push_back(targetItem("Termina sessione", [&item] { item.reset(); }));
    item->setMenu(menu);
    QTest::mouseClick(strip(), Qt::LeftButton);
    ASSERT_TRUE(waitUntil([] { return openMenu() != nullptr; }));
    QTest::keyClick(openMenu(), Qt::Key_Down);
    QTest::keyClick(openMenu(), Qt::Key_Return);
    EXPECT_TRUE(waitUntil([&item] { return !item; }));
    EXPECT_FALSE(strip());
}

TEST_F(StatusBarTest, ComesBackToTheFrontWhenAnotherWindowCoversIt) {
    const auto item = install();
    const QPoint middle = strip()->geometry().center();
    ASSERT_TRUE(waitUntil([&] { return inFrontAt(middle); }));
    const auto other = X11Connection::open();
    const xcb_window_t window = xcb_generate_id(other->get());
    constexpr std::uint32_t unmanaged = 1;
    xcb_create_window(other->get(), XCB_COPY_FROM_PARENT, window, other->root(), 0, 0, 1400, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &unmanaged);
    xcb_map_window(other->get(), window);
    xcb_flush(other->get());
    ASSERT_TRUE(waitUntil([&] { return view.topmostAt(5, 50)->window == window; }));
    EXPECT_TRUE(waitUntil([&] { return inFrontAt(middle); }));
}

TEST_F(StatusBarTest, StaysInFrontOfAnOverlay) {
    const auto item = install();
    const QPoint middle = strip()->geometry().center();
    const auto overlay = computer->overlays.makeOverlay({computer->screens.screens().front().frame, 1000, 0, {}});
    overlay->orderFrontRegardless();
    EXPECT_TRUE(waitUntil([&] { return inFrontAt(middle); }));
    overlay->orderFrontRegardless();
    turnFor(0.2);
    EXPECT_TRUE(inFrontAt(middle));
}

TEST_F(StatusBarTest, IsOnEveryDesktop) {
    const auto item = install();
    const QPoint middle = strip()->geometry().center();
    X11Desktops desktops(view.connection());
    desktops.switchTo(2);
    ASSERT_TRUE(waitUntil([&] { return desktops.current() == 2U; }));
    turnFor(0.2);
    EXPECT_TRUE(inFrontAt(middle));
    desktops.switchTo(0);
    ASSERT_TRUE(waitUntil([&] { return desktops.current() == 0U; }));
}

TEST_F(StatusBarTest, HidesOverAFullScreenWindowUntilThePointerTouchesTheTopEdge) {
    pointer.moveTo(300, 400);
    const auto item = install();
    ASSERT_TRUE(strip());
    const auto browser = fullScreenWindow();
    ASSERT_TRUE(waitUntil([] { return strip() == nullptr; }));
    // Anywhere along the edge.
    pointer.moveTo(40, 0);
    ASSERT_TRUE(waitUntil([] { return strip() != nullptr; }));
    const QPoint middle = strip()->geometry().center();
    EXPECT_TRUE(waitUntil([&] { return inFrontAt(middle); }));
    // On the way to the strip, and over it.
    pointer.moveTo(600, 10);
    turnFor(0.6);
    EXPECT_TRUE(strip());
    pointer.moveTo(middle.x(), middle.y());
    turnFor(0.6);
    EXPECT_TRUE(strip());
    pointer.moveTo(300, 400);
    EXPECT_TRUE(waitUntil([] { return strip() == nullptr; }));
    pointer.moveTo(800, 0);
    EXPECT_TRUE(waitUntil([] { return strip() != nullptr; }));
}

TEST_F(StatusBarTest, IsBroughtOutByAPointerThatIsAtTheTopEdgeAlready) {
    pointer.moveTo(300, 0);
    const auto item = install();
    const auto browser = fullScreenWindow();
    turnFor(0.6);
    EXPECT_TRUE(strip());
    pointer.moveTo(300, 400);
    EXPECT_TRUE(waitUntil([] { return strip() == nullptr; }));
}

TEST_F(StatusBarTest, EndsTheSessionOverAFullScreenWindow) {
    pointer.moveTo(300, 400);
    const auto item = install();
    const auto browser = fullScreenWindow();
    ASSERT_TRUE(waitUntil([] { return strip() == nullptr; }));
    pointer.moveTo(300, 0);
    ASSERT_TRUE(waitUntil([] { return strip() != nullptr; }));
    const QPoint middle = strip()->geometry().center();
    pointer.clickAt(middle.x(), middle.y());
    ASSERT_TRUE(waitUntil([] { return openMenu() != nullptr; }));
    const QPoint entry = openMenu()->mapToGlobal(openMenu()->actionGeometry(openMenu()->actions().at(2)).center());
    pointer.moveTo(entry.x(), entry.y());
    // The strip stays visible as long as its menu is open.
    turnFor(1);
    ASSERT_TRUE(openMenu());
    EXPECT_TRUE(strip());
    pointer.click();
    EXPECT_TRUE(waitUntil([this] { return chosen == 1; }));
    pointer.moveTo(300, 400);
    EXPECT_TRUE(waitUntil([] { return strip() == nullptr; }));
}

TEST_F(StatusBarTest, IsThereAgainWhenTheFullScreenWindowGoes) {
    pointer.moveTo(300, 400);
    const auto item = install();
    auto browser = fullScreenWindow();
    ASSERT_TRUE(waitUntil([] { return strip() == nullptr; }));
    browser->changeState(false, "_NET_WM_STATE_FULLSCREEN");
    EXPECT_TRUE(waitUntil([] { return strip() != nullptr; }));
    browser->changeState(true, "_NET_WM_STATE_FULLSCREEN");
    EXPECT_TRUE(waitUntil([] { return strip() == nullptr; }));
    browser->destroy();
    EXPECT_TRUE(waitUntil([] { return strip() != nullptr; }));
}

TEST_F(StatusBarTest, ComesOutAtTheEdgeWhateverDisplayIsCovered) {
    MonitorLayout layout;
    layout.set({{"VTEST-A", {0, 0, 800, 700}}, {"VTEST-B", {800, 100, 700, 600}}});
    pointer.moveTo(300, 400);
    const auto item = install();
    const auto browser = fullScreenWindow();
    ASSERT_TRUE(waitUntil([] { return strip() == nullptr; }));
    const Rect primary{{0, 0}, {800, 700}};
    const Rect other{{800, 0}, {700, 600}};
    for (const Rect& frame : {primary, other}) {
        const auto overlay = computer->overlays.makeOverlay({frame, 1000, 0, {}});
        overlay->orderFrontRegardless();
        turnFor(0.3);
        EXPECT_EQ(strip(), nullptr);
        pointer.moveTo(300, 0);
        ASSERT_TRUE(waitUntil([] { return strip() != nullptr; }));
        const QPoint middle = strip()->geometry().center();
        EXPECT_TRUE(waitUntil([&] { return inFrontAt(middle); }));
        overlay->orderOut();
        pointer.moveTo(300, 400);
        EXPECT_TRUE(waitUntil([] { return strip() == nullptr; }));
    }
}

TEST_F(StatusBarTest, IsBroughtOutByAQuickPointerOnItsWayToADisplayAbove) {
    MonitorLayout layout;
    layout.set({{"VTEST-A", {0, 400, 800, 400}}, {"VTEST-B", {0, 0, 800, 400}}});
    pointer.moveTo(300, 700);
    const auto item = install();
    ForeignWindow browser("Lezione", {100, 450, 300, 200});
    ASSERT_TRUE(waitUntil([&] { return X11Windows(view.connection()).active() == browser.id(); }));
    browser.changeState(true, "_NET_WM_STATE_FULLSCREEN");
    ASSERT_TRUE(waitUntil([] { return strip() == nullptr; }));
    for (const int leap : {2, 7, 12}) {
        for (int round = 0; round < 12; ++round) {
            // From every distance to the edge.
            for (int y = 480 - round; y > 400 - leap; y -= leap) {
                pointer.moveTo(300, y);
                turnFor(0.008);
            }
            EXPECT_TRUE(waitUntil([] { return strip() != nullptr; }, 0.15)) << leap << " pixels at a time";
            // Back from beyond the edge.
            pointer.moveTo(300, 405);
            turnFor(round == 0 ? 0.5 : 0);
            EXPECT_TRUE(strip());
            pointer.moveTo(300, 700);
            ASSERT_TRUE(waitUntil([] { return strip() == nullptr; }));
        }
    }
}

TEST_F(StatusBarTest, TakesOnlyTheOutermostPixelsWhereNoDisplayIsAbove) {
    MonitorLayout layout;
    layout.set({{"VTEST-A", {0, 0, 800, 400}}, {"VTEST-B", {0, 400, 800, 400}}});
    pointer.moveTo(300, 300);
    const auto item = install();
    const auto browser = fullScreenWindow();
    ASSERT_TRUE(waitUntil([] { return strip() == nullptr; }));
    pointer.moveTo(300, 1);
    turnFor(0.3);
    EXPECT_FALSE(strip());
    pointer.moveTo(300, 0);
    EXPECT_TRUE(waitUntil([] { return strip() != nullptr; }));
}

TEST_F(StatusBarTest, LeavesTheTopEdgeAloneOnceRemoved) {
    auto item = install();
    const auto browser = fullScreenWindow();
    pointer.moveTo(300, 400);
    ASSERT_TRUE(waitUntil([] { return strip() == nullptr; }));
    computer->statusBar.removeStatusItem(*item);
    pointer.moveTo(300, 0);
    turnFor(0.3);
    EXPECT_FALSE(strip());
}

TEST_F(StatusBarTest, HangsFromThePrimaryDisplayWhereverItMoves) {
    MonitorLayout layout;
    layout.set({{"VTEST-A", {0, 0, 800, 700}}, {"VTEST-B", {800, 100, 700, 600}}});
    const auto item = install();
    EXPECT_EQ(strip()->geometry().top(), 0);
    EXPECT_LT(strip()->geometry().right(), 800);
    layout.set({{"VTEST-B", {800, 100, 700, 600}}, {"VTEST-A", {0, 0, 800, 700}}});
    EXPECT_TRUE(waitUntil([] { return strip()->geometry().top() == 100 && strip()->geometry().left() > 800; }));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
