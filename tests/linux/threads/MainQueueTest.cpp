#include <QLabel>
#include <QTest>
#include <atomic>
#include <thread>
#include <utility>
#include <vector>

#include "tests/linux/support/DesktopTest.h"

namespace vantrel::linuxdesktop {
namespace {

class MainQueueTest : public DesktopTest {
  protected:
    DispatchQueue& queue() { return computer->dispatch.mainQueue(); }

    // Runs the block in an event once the alert with this text is in front.
    void whenShown(const char* text, Block block) {
        postEvent([this, text, block = std::move(block)] {
            const QLabel* message = alert() != nullptr ? alert()->findChild<QLabel*>("messageText") : nullptr;
            if (message != nullptr && message->text() == text) {
                block();
            } else {
                whenShown(text, block);
            }
        });
    }
};

TEST_F(MainQueueTest, RunsBlocksOfAllThreadsInOrderOnTheMainThread) {
    std::vector<int> order;
    std::atomic<bool> offMainThread = false;
    std::thread other([&] {
        for (int i = 0; i < 100; ++i) {
            queue().async([&, i] {
                order.push_back(i);
                if (!computer->threads.isMainThread()) offMainThread = true;
            });
        }
    });
    EXPECT_TRUE(waitUntil([&] { return order.size() == 100; }));
    other.join();
    for (int i = 0; i < 100; ++i) EXPECT_EQ(order.at(static_cast<std::size_t>(i)), i);
    EXPECT_FALSE(offMainThread);
}

TEST_F(MainQueueTest, NeverRunsABlockBeforeAsyncReturns) {
    bool ran = false;
    queue().async([&ran] { ran = true; });
    EXPECT_FALSE(ran);
    EXPECT_TRUE(waitUntil([&] { return ran; }));
}

TEST_F(MainQueueTest, HoldsBlocksBackUnderAnAlertOfOneOfItsOwn) {
    std::vector<std::string> order;
    answerAlertLater(Qt::Key_Return, [&] {
        queue().async([&] { order.push_back("second"); });
        queue().asyncAfter(0.01, [&] { order.push_back("third"); });
        turnFor(0.3);
        order.push_back("alert answered");
    });
    queue().async([&] {
        order.push_back("first begins");
        computer->alerts.runModal({AlertStyle::warning, "Titolo", "", {}});
        order.push_back("first ends");
    });
    EXPECT_TRUE(waitUntil([&] { return order.size() == 5; }));
    EXPECT_EQ(order, (std::vector<std::string>{"first begins", "alert answered", "first ends", "second", "third"}));
}

TEST_F(MainQueueTest, GoesOnUnderAnAlertOfAnEvent) {
    std::vector<std::string> order;
    answerAlertLater(Qt::Key_Return, [&] {
        queue().async([&] { order.push_back("block"); });
        turnFor(0.3);
        order.push_back("alert answered");
    });
    postEvent([&] {
        computer->alerts.runModal({AlertStyle::warning, "Titolo", "", {}});
        order.push_back("event ends");
    });
    EXPECT_TRUE(waitUntil([&] { return order.size() == 3; }));
    EXPECT_EQ(order, (std::vector<std::string>{"block", "alert answered", "event ends"}));
}

TEST_F(MainQueueTest, HoldsBlocksBackUnderASecondAlertThatABlockOpensOverTheFirst) {
    std::vector<std::string> order;
    whenShown("Primo", [&] {
        queue().async([&] {
            computer->alerts.runModal({AlertStyle::warning, "Secondo", "", {}});
            order.push_back("second alert ends");
        });
        whenShown("Secondo", [&] {
            queue().async([&] { order.push_back("held back"); });
            turnFor(0.2);
            order.push_back("second alert answered");
            QTest::keyClick(alert(), Qt::Key_Return);
        });
    });
    postEvent([&] {
        computer->alerts.runModal({AlertStyle::warning, "Primo", "", {}});
        order.push_back("first alert ends");
    });
    // The alerts' own loops serve the wait until the first alert is answered.
    std::thread participant([&] {
        computer->threads.sleep(1);
        postEvent([] {
            if (alert() != nullptr) QTest::keyClick(alert(), Qt::Key_Return);
        });
    });
    EXPECT_TRUE(waitUntil([&] { return order.size() == 4; }));
    participant.join();
    EXPECT_EQ(order, (std::vector<std::string>{"second alert answered", "second alert ends", "held back",
                                               "first alert ends"}));
}

TEST_F(MainQueueTest, LetsABlockJoinTheQueueAfterItsTimeAndNotBefore) {
    const double start = computer->clock.uptime();
    double ran = 0;
    queue().asyncAfter(0.2, [&] { ran = computer->clock.uptime(); });
    EXPECT_TRUE(waitUntil([&] { return ran != 0; }));
    EXPECT_GE(ran - start, 0.2);
}

}  // namespace
}  // namespace vantrel::linuxdesktop
