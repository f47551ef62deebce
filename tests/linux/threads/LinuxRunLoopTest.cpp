#include <QApplication>
#include <QMenu>
#include <QTest>
#include <thread>
#include <vector>

#include "tests/linux/support/Builders.h"
#include "tests/linux/support/DesktopTest.h"

namespace vantrel::linuxdesktop {
namespace {

class LinuxRunLoopTest : public DesktopTest {
  protected:
    double now() const { return computer->clock.uptime(); }
    RunLoop& loop() { return computer->mainRunLoop; }
};

TEST_F(LinuxRunLoopTest, FiresOnceWithoutRepeating) {
    int fired = 0;
    const double start = now();
    double when = 0;
    const auto timer = loop().scheduledTimer(0.1, false, [&] {
        ++fired;
        when = now();
    });
    turnFor(0.5);
    EXPECT_EQ(fired, 1);
    EXPECT_GE(when - start, 0.1);
    EXPECT_EQ(desktop->timerCount(), 0u);
}

TEST_F(LinuxRunLoopTest, FiresOnceWhenLateAndKeepsItsGrid) {
    const double start = now();
    std::vector<double> moments;
    const auto timer = loop().scheduledTimer(0.2, true, [&] { moments.push_back(now() - start); });
    ASSERT_TRUE(waitUntil([&] { return moments.size() == 1; }));
    computer->threads.sleep(0.75 - (now() - start));
    ASSERT_TRUE(waitUntil([&] { return moments.size() == 3; }));
    // One late call for the times 0.4 and 0.6, which passed during the sleep; the next one is on the grid again.
    EXPECT_GE(moments[0], 0.2);
    EXPECT_GE(moments[1], 0.75);
    EXPECT_GE(moments[2], 0.8);
}

TEST_F(LinuxRunLoopTest, StandsStillUnderAnAlertAndFiresOnceAfterIt) {
    int fired = 0;
    int firedUnderAlert = -1;
    bool over = false;
    std::unique_ptr<Timer> timer;
    answerAlertLater(Qt::Key_Return, [&] {
        turnFor(0.45);
        firedUnderAlert = fired;
    });
    postEvent([&] {
        timer = loop().scheduledTimer(0.1, true, [&fired] { ++fired; });
        computer->alerts.runModal({AlertStyle::warning, "Titolo", "", {}});
        over = true;
    });
    ASSERT_TRUE(waitUntil([&] { return over && fired > 0; }));
    EXPECT_EQ(firedUnderAlert, 0);
    EXPECT_EQ(fired, 1);
}

TEST_F(LinuxRunLoopTest, StandsStillWhileAMenuIsOpen) {
    auto item = computer->statusBar.statusItem(variableStatusItemLength);
    item->setButtonTitle("Titolo");
    Menu menu;
    menu.items.push_back(targetItem("Voce", [] {}));
    item->setMenu(menu);
    int fired = 0;
    const auto timer = loop().scheduledTimer(0.1, true, [&fired] { ++fired; });
    ASSERT_TRUE(waitUntil([&] { return fired > 0; }));

    QMenu* shown = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* candidate = qobject_cast<QMenu*>(widget)) shown = candidate;
    }
    ASSERT_TRUE(shown);
    shown->popup(QPoint(10, 10));
    const int before = fired;
    turnFor(0.4);
    EXPECT_EQ(fired, before);
    shown->hide();
    EXPECT_TRUE(waitUntil([&] { return fired > before; }));

    // A menu that is destroyed while open lets the timers continue too.
    shown->popup(QPoint(10, 10));
    const int again = fired;
    item.reset();
    EXPECT_TRUE(waitUntil([&] { return fired > again; }));
}

TEST_F(LinuxRunLoopTest, IsInvalidatedByItsHandlesEnd) {
    int fired = 0;
    auto timer = loop().scheduledTimer(0.05, true, [&fired] { ++fired; });
    EXPECT_EQ(desktop->timerCount(), 1u);
    timer.reset();
    EXPECT_EQ(desktop->timerCount(), 0u);
    turnFor(0.2);
    EXPECT_EQ(fired, 0);
}

TEST_F(LinuxRunLoopTest, MayBeInvalidatedAndDestroyedInsideItsOwnBlock) {
    int fired = 0;
    std::unique_ptr<Timer> destroyed;
    std::unique_ptr<Timer> invalidated;
    const auto captured = std::make_shared<int>(7);
    destroyed = loop().scheduledTimer(0.05, true, [&fired, &destroyed, captured] {
        destroyed.reset();
        fired += *captured;
    });
    invalidated = loop().scheduledTimer(0.05, true, [&fired, &invalidated, captured] {
        invalidated->invalidate();
        invalidated->invalidate();
        fired += *captured;
    });
    turnFor(0.4);
    EXPECT_EQ(fired, 14);
    EXPECT_EQ(captured.use_count(), 1);
}

TEST_F(LinuxRunLoopTest, MayBeInvalidatedOnAnyThreadAndLetsGoOfItsBlockOnTheMainOne) {
    struct Witness {
        const Threads& threads;
        bool& diedOnMainThread;
        Witness(const Threads& threads, bool& died) : threads(threads), diedOnMainThread(died) {}
        ~Witness() { diedOnMainThread = threads.isMainThread(); }
    };
    bool diedOnMainThread = false;
    bool fired = false;
    auto timer = loop().scheduledTimer(
        0.1, true,
        [&fired, witness = std::make_shared<Witness>(computer->threads, diedOnMainThread)] { fired = true; });
    std::thread([&] { timer->invalidate(); }).join();
    turnFor(0.3);
    EXPECT_FALSE(fired);
    EXPECT_TRUE(diedOnMainThread);
    EXPECT_EQ(desktop->timerCount(), 0u);
}

TEST_F(LinuxRunLoopTest, DoesNotCallATimerThatAnotherOfTheSameMomentInvalidated) {
    int fired = 0;
    std::unique_ptr<Timer> second;
    const auto first = loop().scheduledTimer(0.05, false, [&second] { second.reset(); });
    second = loop().scheduledTimer(0.05, false, [&fired] { ++fired; });
    computer->threads.sleep(0.2);
    turnFor(0.2);
    EXPECT_EQ(fired, 0);
}

}  // namespace
}  // namespace vantrel::linuxdesktop
