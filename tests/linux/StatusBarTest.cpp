#include <QApplication>
#include <QMenu>
#include <QPixmap>
#include <QScreen>
#include <QSystemTrayIcon>
#include <QTest>

#include "Builders.h"
#include "DesktopTest.h"

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

    int chosen = 0;
};

TEST_F(StatusBarTest, HangsFromTheTopEdgeOfTheMainScreen) {
    const auto item = install();
    ASSERT_TRUE(strip());
    EXPECT_EQ(strip()->y(), 0);
    EXPECT_GT(strip()->width(), 60);
    const auto screen = computer->screens.mainScreen();
    ASSERT_TRUE(screen);
    EXPECT_GE(strip()->x(), screen->frame.origin.x + screen->frame.size.width / 2);
    EXPECT_LE(strip()->geometry().right(), screen->frame.origin.x + screen->frame.size.width);
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

TEST_F(StatusBarTest, ComesBackToTheFrontWhenAFullScreenWindowCoversIt) {
    const auto item = install();
    QWidget cover;
    cover.setObjectName("cover");
    cover.setStyleSheet("background: #00a000");
    cover.showFullScreen();
    ASSERT_TRUE(waitUntil([&cover] { return cover.isActiveWindow(); }));
    cover.raise();
    turnFor(0.3);
    // What the screen really shows there: the strip is dark, the cover green.
    const QPixmap shot = QGuiApplication::primaryScreen()->grabWindow(0, strip()->x() + 3, strip()->y() + 10, 1, 1);
    EXPECT_LT(shot.toImage().pixelColor(0, 0).green(), 80);
}

}  // namespace
}  // namespace vantrel::linuxdesktop
