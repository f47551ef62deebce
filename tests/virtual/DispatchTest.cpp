#include <atomic>
#include <string>

#include "platform/threads/Lock.h"
#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

class DispatchTest : public MacTest {};

TEST_F(DispatchTest, RunsGlobalBlocksSideBySideOffTheMainThread) {
    std::atomic<int> ended = 0;
    for (int block = 0; block < 3; ++block) {
        computer().dispatch.userInitiatedQueue().async([&] {
            EXPECT_FALSE(computer().threads.isMainThread());
            computer().threads.sleep(2);
            ++ended;
        });
    }
    mac().runFor(2);
    EXPECT_EQ(3, ended);
    EXPECT_EQ(0U, mac().leftovers().workers);
}

TEST_F(DispatchTest, DelaysGlobalBlocks) {
    computer().dispatch.userInitiatedQueue().asyncAfter(3, [&] { computer().log.print("late"); });
    mac().runFor(2.9);
    EXPECT_EQ(Lines{}, logLines());
    EXPECT_EQ(1U, mac().leftovers().workers);
    mac().runFor(0.1);
    EXPECT_EQ(Lines{"late"}, logLines());
}

TEST_F(DispatchTest, KnowsTheMainThread) {
    bool main = false;
    mac().onMain([&] { main = computer().threads.isMainThread(); });
    EXPECT_TRUE(main);
    mac().onMainQueue([&] { main = !computer().threads.isMainThread(); });
    EXPECT_FALSE(main);
    EXPECT_FALSE(computer().threads.isMainThread());
}

TEST_F(DispatchTest, EndsASemaphoresWaitWithItsSignalOrItsTimeOut) {
    const auto semaphore = computer().dispatch.makeSemaphore(0);
    mac().inBackground([&] {
        computer().log.print(semaphore->wait(5) ? "signalled" : "timed out");
        computer().log.print(semaphore->wait(5) ? "signalled" : "timed out");
        computer().log.print(std::to_string(computer().clock.uptime()));
    });
    mac().after(2, [&] { semaphore->signal(); });
    mac().runUntilIdle();
    EXPECT_EQ((Lines{"signalled", "timed out", "7.000000"}), logLines());
}

TEST_F(DispatchTest, GivesEverySignalToOneWait) {
    const auto semaphore = computer().dispatch.makeSemaphore(1);
    std::atomic<int> taken = 0;
    for (int worker = 0; worker < 5; ++worker) {
        mac().inBackground([&] { taken += semaphore->wait(10) ? 1 : 0; });
    }
    mac().after(1, [&] {
        semaphore->signal();
        semaphore->signal();
    });
    mac().runUntilIdle();
    EXPECT_EQ(3, taken);
    EXPECT_EQ(10.0, mac().now());
}

TEST_F(DispatchTest, ReportsAWaitUnderALockAndDoesNotWait) {
    expectMisuse();
    const auto semaphore = computer().dispatch.makeSemaphore(0);
    mac().inBackground([&] {
        Lock lock;
        const std::lock_guard guard(lock);
        EXPECT_FALSE(semaphore->wait(5));
        computer().threads.sleep(5);
    });
    mac().runUntilIdle();
    EXPECT_EQ(0.0, mac().now());
    EXPECT_EQ((Lines{"a wait with a lock held", "a wait with a lock held"}), expectedMisuse());
}

TEST_F(DispatchTest, ReportsADeadlockOfTheMainThread) {
    expectMisuse();
    const auto semaphore = computer().dispatch.makeSemaphore(0);
    EXPECT_TRUE(mac().onMain([&] { semaphore->wait(std::numeric_limits<double>::infinity()); }));
    EXPECT_EQ(Lines{"deadlock: a wait that nothing can end"}, expectedMisuse());
}

TEST_F(DispatchTest, NotifiesAGroupOnTheQueueThatWasAskedFor) {
    const auto group = computer().dispatch.makeGroup();
    group->enter();
    group->notify(computer().dispatch.mainQueue(),
                  [&] { computer().log.print(computer().threads.isMainThread() ? "on main" : "elsewhere"); });
    mac().inBackground([&] {
        computer().threads.sleep(1);
        group->leave();
    });
    mac().runFor(0.5);
    EXPECT_EQ(Lines{}, logLines());
    mac().runFor(0.5);
    EXPECT_EQ(Lines{"on main"}, logLines());
}

TEST_F(DispatchTest, LetsThreadsThatPrintMixInAsManyWaysAsThereAreSeedsBaton) {
    const auto play = [](std::uint64_t seed) {
        Options options;
        options.seed = seed;
        std::string order;
        options.onEvent = [&order](const Event& event) { order += event.text; };
        VirtualMac mac(options);
        for (const char* name : {"a", "b"}) {
            mac.inBackground([&mac, name] {
                for (int turn = 0; turn < 4; ++turn) mac.computer().log.print(name);
            });
        }
        mac.runUntilIdle();
        return order;
    };
    std::set<std::string> orders;
    for (std::uint64_t seed = 0; seed < 30; ++seed) orders.insert(play(seed));
    EXPECT_GT(orders.size(), 10U);
    EXPECT_EQ("aaaabbbb", play(0));
}

TEST_F(DispatchTest, DropsBlocksThatNeverRanOnTheMainThread) {
    struct MainOnly {
        explicit MainOnly(Computer& computer) : computer(computer) {}
        ~MainOnly() { EXPECT_TRUE(computer.threads.isMainThread()); }
        Computer& computer;
    };
    auto owned = std::make_shared<MainOnly>(computer());
    const std::weak_ptr<MainOnly> watch = owned;
    computer().dispatch.mainQueue().asyncAfter(std::numeric_limits<double>::infinity(), [owned] {});
    owned.reset();
    mac().runFor(1);
    EXPECT_FALSE(watch.expired());
    end();
    EXPECT_TRUE(watch.expired());
}

}  // namespace
}  // namespace vantrel::virtualmac
