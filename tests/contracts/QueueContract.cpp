#include <atomic>
#include <thread>

#include "tests/contracts/ContractTest.h"

namespace vantrel::contracts {
namespace {

class QueueContract : public ContractTest {
  protected:
    DispatchQueue& main() { return computer().dispatch.mainQueue(); }
    DispatchQueue& global() { return computer().dispatch.userInitiatedQueue(); }
};

TEST_F(QueueContract, TheMainQueueRunsFirstInFirstOutOnTheMainThread) {
    for (const char* name : {"a", "b", "c", "d"}) {
        main().async([this, name] { note(computer().threads.isMainThread() ? name : "not the main thread"); });
    }
    ASSERT_TRUE(noted(4));
    EXPECT_EQ((Notes{"a", "b", "c", "d"}), notes());
}

TEST_F(QueueContract, TheTestIsNotTheMainThreadAndEventsAreOnIt) {
    EXPECT_FALSE(computer().threads.isMainThread());
    std::atomic<bool> main = false;
    host().onMain([&] { main = computer().threads.isMainThread(); });
    EXPECT_TRUE(main);
}

TEST_F(QueueContract, ABlockOfTheMainQueueDoesNotRunTheNextOneByWaiting) {
    main().async([this] {
        main().async([this] { note("second"); });
        computer().threads.sleep(0.05);
        note("first");
    });
    ASSERT_TRUE(noted(2));
    EXPECT_EQ((Notes{"first", "second"}), notes());
}

TEST_F(QueueContract, DelayedBlocksComeNoEarlierThanAsked) {
    const double start = now();
    std::atomic<double> mainCame = 0;
    std::atomic<double> globalCame = 0;
    main().asyncAfter(0.1, [&] { mainCame = now(); });
    global().asyncAfter(0.1, [&] { globalCame = now(); });
    ASSERT_TRUE(eventually([&] { return mainCame != 0 && globalCame != 0; }));
    EXPECT_GE(mainCame - start, 0.1 - tolerance);
    EXPECT_GE(globalCame - start, 0.1 - tolerance);
}

TEST_F(QueueContract, DelayedBlocksJoinTheMainQueueInTheOrderOfTheirMoments) {
    main().asyncAfter(0.2, [this] { note("c"); });
    main().asyncAfter(0.1, [this] { note("b"); });
    main().async([this] { note("a"); });
    ASSERT_TRUE(noted(3));
    EXPECT_EQ((Notes{"a", "b", "c"}), notes());
}

TEST_F(QueueContract, GlobalBlocksRunSideBySideOffTheMainThread) {
    const auto first = computer().dispatch.makeSemaphore(0);
    const auto second = computer().dispatch.makeSemaphore(0);
    global().async([&, first, second] {
        second->signal();
        note(first->wait(10) && !computer().threads.isMainThread() ? "met" : "missed");
    });
    global().async([&, first, second] {
        first->signal();
        note(second->wait(10) && !computer().threads.isMainThread() ? "met" : "missed");
    });
    ASSERT_TRUE(noted(2));
    EXPECT_EQ((Notes{"met", "met"}), notes());
}

TEST_F(QueueContract, SleepingTakesAtLeastItsTime) {
    std::atomic<double> slept = 0;
    global().async([&] {
        const double start = now();
        computer().threads.sleep(0.05);
        slept = now() - start;
    });
    ASSERT_TRUE(eventually([&] { return slept != 0; }));
    EXPECT_GE(slept, 0.05 - tolerance);
}

TEST_F(QueueContract, ABlockIsReleasedOnceItHasRun) {
    auto owned = std::make_shared<int>();
    const std::weak_ptr<int> watch = owned;
    main().async([owned] {});
    global().async([owned] {});
    owned.reset();
    EXPECT_TRUE(eventually([&] { return watch.expired(); }));
}

TEST_F(QueueContract, TheUptimeNeverGoesBack) {
    double last = now();
    for (int reading = 0; reading < 1000; ++reading) {
        const double next = now();
        ASSERT_GE(next, last);
        last = next;
    }
}

}  // namespace
}  // namespace vantrel::contracts
