#include <string>

#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

class RunLoopTest : public MacTest {
  protected:
    void print(const std::string& line) { computer().log.print(line); }
    void printTime(const std::string& line) {
        print(line + " " + std::to_string(static_cast<int>(computer().clock.uptime() * 10 + 0.5)));
    }
};

TEST_F(RunLoopTest, FiresARepeatingTimerOnItsGridFromTheFirstIntervalOn) {
    std::unique_ptr<Timer> timer;
    mac().onMain([&] { timer = computer().mainRunLoop.scheduledTimer(1.5, true, [this] { printTime("tick"); }); });
    mac().runFor(5);
    EXPECT_EQ((Lines{"tick 15", "tick 30", "tick 45"}), logLines());
    timer.reset();
    mac().runFor(5);
    EXPECT_EQ(3U, logLines().size());
}

TEST_F(RunLoopTest, FiresALateRepeatingTimerOnceAndKeepsItsGrid) {
    std::unique_ptr<Timer> timer;
    mac().onMain([&] {
        timer = computer().mainRunLoop.scheduledTimer(1, true, [this] { printTime("tick"); });
        computer().threads.sleep(3.5);
    });
    mac().runFor(2);
    EXPECT_EQ((Lines{"tick 35", "tick 40", "tick 50"}), logLines());
    mac().onMain([&] { timer.reset(); });
}

TEST_F(RunLoopTest, FiresATimerThatDoesNotRepeatOnce) {
    std::unique_ptr<Timer> timer;
    mac().onMain([&] { timer = computer().mainRunLoop.scheduledTimer(2, false, [this] { printTime("tick"); }); });
    mac().runUntilIdle();
    EXPECT_EQ(2.0, mac().now());
    mac().runFor(10);
    EXPECT_EQ((Lines{"tick 20"}), logLines());
    EXPECT_EQ(0U, mac().leftovers().timers);
}

TEST_F(RunLoopTest, FiresWhatIsThePlatformsOwnUnderAnAlertAndBeforeAllElseOfItsMoment) {
    auto& loop = mac().engine().mainLoop;
    const auto own = loop.addTimerInEveryMode(1, true, [this] { printTime("own"); });
    mac().at(1, [this, &loop] { loop.postEvent([this] { printTime("event"); }); });
    mac().at(1.5, [this] {
        mac().postToMain([this] { computer().alerts.runModal({AlertStyle::warning, "Uno", "", {"A"}}); });
    });
    mac().runFor(3);
    EXPECT_EQ((Lines{"own 10", "event 10", "own 20", "own 30"}), logLines());
    EXPECT_EQ(0U, mac().leftovers().timers) << "it is none of the client's";
    loop.invalidate(*own);
    mac().participant().answerAlert("A");
    mac().runFor(0);
}

TEST_F(RunLoopTest, LetsATimerBeInvalidatedAndDestroyedFromItsOwnBlock) {
    std::unique_ptr<Timer> timer;
    const auto owned = std::make_shared<int>(7);
    mac().onMain([&] {
        timer = computer().mainRunLoop.scheduledTimer(1, true, [this, &timer, owned] {
            timer->invalidate();
            timer.reset();
            print("still here " + std::to_string(*owned));
        });
    });
    mac().runFor(5);
    EXPECT_EQ((Lines{"still here 7"}), logLines());
    EXPECT_EQ(1, owned.use_count());
}

TEST_F(RunLoopTest, LetsATimerBeInvalidatedFromAnyThread) {
    std::unique_ptr<Timer> timer;
    mac().onMain([&] { timer = computer().mainRunLoop.scheduledTimer(1, true, [this] { print("tick"); }); });
    mac().inBackground([&] {
        computer().threads.sleep(2.5);
        timer->invalidate();
    });
    mac().runFor(10);
    EXPECT_EQ((Lines{"tick", "tick"}), logLines());
}

TEST_F(RunLoopTest, HoldsTimersBackUnderAnAlertButNotEventsAndTheMainQueue) {
    std::unique_ptr<Timer> timer;
    mac().onMain([&] { timer = computer().mainRunLoop.scheduledTimer(1, true, [this] { printTime("tick"); }); });
    mac().postToMain([this] {
        computer().alerts.runModal({AlertStyle::warning, "Attenzione", "", {}});
        printTime("dismissed");
    });
    computer().dispatch.mainQueue().asyncAfter(2, [this] { printTime("block"); });
    mac().runFor(2);
    mac().onMain([this] { printTime("event"); });
    mac().runFor(1.5);
    participant().answerAlert("OK");
    mac().runFor(1);
    EXPECT_EQ((Lines{"block 20", "event 20", "dismissed 35", "tick 35", "tick 40"}), logLines());
    mac().onMain([&] { timer.reset(); });
}

TEST_F(RunLoopTest, DoesNotReenterTheMainQueueUnderAnAlertThatOneOfItsBlocksOpened) {
    computer().dispatch.mainQueue().async([this] {
        print("first");
        computer().alerts.runModal({AlertStyle::warning, "Attenzione", "", {}});
        print("first ends");
    });
    computer().dispatch.mainQueue().async([this] { print("second"); });
    mac().runFor(5);
    mac().onMain([this] { print("event"); });
    EXPECT_EQ((Lines{"first", "event"}), logLines());
    participant().answerAlert("OK");
    mac().runFor(0);
    EXPECT_EQ((Lines{"first", "event", "first ends", "second"}), logLines());
}

TEST_F(RunLoopTest, DoesNotReenterAMainQueueBlockThatRanUnderAnEventsAlert) {
    mac().postToMain([this] { computer().alerts.runModal({AlertStyle::warning, "Uno", "", {}}); });
    mac().runFor(0);
    computer().dispatch.mainQueue().async([this] {
        print("block");
        computer().alerts.runModal({AlertStyle::warning, "Due", "", {}});
        print("block ends");
    });
    computer().dispatch.mainQueue().async([this] { print("next"); });
    mac().runFor(1);
    EXPECT_EQ((Lines{"block"}), logLines());
    participant().answerAlert("OK");
    mac().runFor(0);
    EXPECT_EQ((Lines{"block", "block ends", "next"}), logLines());
    EXPECT_EQ(1U, mac().alerts().up().size());
}

TEST_F(RunLoopTest, StopsEverythingOfTheMainThreadWhileItSleeps) {
    std::unique_ptr<Timer> timer;
    mac().onMain([&] { timer = computer().mainRunLoop.scheduledTimer(1, false, [this] { printTime("tick"); }); });
    mac().postToMain([this] { computer().threads.sleep(4); });
    computer().dispatch.mainQueue().asyncAfter(2, [this] { printTime("block"); });
    mac().postToMain([this] { printTime("event"); });
    mac().runFor(3.9);
    EXPECT_EQ(Lines{}, logLines());
    mac().runFor(0.1);
    EXPECT_EQ((Lines{"event 40", "tick 40", "block 40"}), logLines());
    mac().onMain([&] { timer.reset(); });
}

TEST_F(RunLoopTest, RunsTheMainQueueFirstInFirstOutByTheMomentOfJoining) {
    auto& queue = computer().dispatch.mainQueue();
    queue.asyncAfter(2, [this] { print("d"); });
    queue.asyncAfter(1, [this] { print("b"); });
    queue.async([this] { print("a"); });
    queue.asyncAfter(1, [this] { print("c"); });
    mac().runUntilIdle();
    EXPECT_EQ((Lines{"a", "b", "c", "d"}), logLines());
}

TEST_F(RunLoopTest, RefusesATimerOffTheMainThread) {
    expectMisuse();
    mac().inBackground([this] { computer().mainRunLoop.scheduledTimer(1, false, [] {}).reset(); });
    mac().runFor(0);
    EXPECT_EQ((Lines{"RunLoop.scheduledTimer off the main thread"}), expectedMisuse());
}

/// With own work, every step also posts some, which is counted.
Lines equalMoments(std::uint64_t seed, int* ownWork = nullptr) {
    Options options;
    options.seed = seed;
    Lines order;
    options.onEvent = [&order](const Event& event) { order.push_back(event.text); };
    VirtualMac mac(options);
    Computer& computer = mac.computer();
    const auto step = [&](const char* name) {
        if (ownWork != nullptr) mac.engine().mainLoop.postOwn([ownWork] { ++*ownWork; });
        computer.log.print(name);
    };
    std::unique_ptr<Timer> timer;
    mac.onMain([&] { timer = computer.mainRunLoop.scheduledTimer(1, false, [&] { step("timer"); }); });
    computer.dispatch.mainQueue().asyncAfter(1, [&] { step("block 1"); });
    computer.dispatch.mainQueue().asyncAfter(1, [&] { step("block 2"); });
    mac.at(1, [&] { mac.postToMain([&] { step("event"); }); });
    mac.inBackground([&] {
        computer.threads.sleep(1);
        step("worker");
    });
    mac.runFor(2);
    mac.onMain([&] { timer.reset(); });
    return order;
}

TEST(RunLoop, OrdersEqualMomentsOfDifferentSourcesByTheSeedBaton) {
    std::set<Lines> orders;
    for (std::uint64_t seed = 0; seed < 30; ++seed) {
        const Lines order = equalMoments(seed);
        EXPECT_EQ(order, equalMoments(seed));
        EXPECT_EQ(5U, order.size());
        EXPECT_LT(std::find(order.begin(), order.end(), "block 1"), std::find(order.begin(), order.end(), "block 2"));
        orders.insert(order);
    }
    EXPECT_GT(orders.size(), 5U);
    EXPECT_EQ((Lines{"event", "block 1", "block 2", "timer", "worker"}), equalMoments(0));
}

TEST(RunLoop, APlatformsOwnWorkRunsAndChangesNoOrderBaton) {
    for (std::uint64_t seed = 0; seed < 30; ++seed) {
        int ownWork = 0;
        EXPECT_EQ(equalMoments(seed, &ownWork), equalMoments(seed)) << seed;
        EXPECT_EQ(5, ownWork) << seed;
    }
}

}  // namespace
}  // namespace vantrel::virtualmac
