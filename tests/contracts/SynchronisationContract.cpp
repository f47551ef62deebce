#include <algorithm>
#include <atomic>

#include "tests/contracts/ContractTest.h"

namespace vantrel::contracts {
namespace {

class SemaphoreContract : public ContractTest {};
class GroupContract : public ContractTest {};

TEST_F(SemaphoreContract, AWaitEndsWithASignal) {
    const auto semaphore = computer().dispatch.makeSemaphore(0);
    computer().dispatch.userInitiatedQueue().async([this, semaphore] { note(semaphore->wait(20) ? "yes" : "no"); });
    host().letTimePass(0.05);
    EXPECT_EQ(Notes{}, notes());
    semaphore->signal();
    ASSERT_TRUE(noted(1));
    EXPECT_EQ(Notes{"yes"}, notes());
}

TEST_F(SemaphoreContract, AWaitTimesOutNoEarlierThanAsked) {
    const auto semaphore = computer().dispatch.makeSemaphore(0);
    std::atomic<double> waited = 0;
    computer().dispatch.userInitiatedQueue().async([&, semaphore] {
        const double start = now();
        if (!semaphore->wait(0.1)) waited = now() - start;
    });
    ASSERT_TRUE(eventually([&] { return waited != 0; }));
    EXPECT_GE(waited, 0.1 - tolerance);
}

TEST_F(SemaphoreContract, ASignalBeforeTheWaitCounts) {
    const auto semaphore = computer().dispatch.makeSemaphore(1);
    semaphore->signal();
    computer().dispatch.userInitiatedQueue().async([this, semaphore] {
        for (int turn = 0; turn < 3; ++turn) note(semaphore->wait(0.02) ? "yes" : "no");
    });
    ASSERT_TRUE(noted(3));
    EXPECT_EQ((Notes{"yes", "yes", "no"}), notes());
}

TEST_F(SemaphoreContract, TheMainThreadStandsStillWhileItWaits) {
    const auto semaphore = computer().dispatch.makeSemaphore(0);
    host().postToMain([this, semaphore] {
        semaphore->wait(20);
        note("event");
    });
    computer().dispatch.mainQueue().async([this] { note("block"); });
    computer().dispatch.userInitiatedQueue().asyncAfter(0.1, [this, semaphore] {
        note("signal");
        semaphore->signal();
    });
    ASSERT_TRUE(noted(3));
    const auto seen = notes();
    EXPECT_LT(std::find(seen.begin(), seen.end(), "signal"), std::find(seen.begin(), seen.end(), "event"));
}

TEST_F(GroupContract, TellsTheQueueOnceWhenTheLastOneHasLeft) {
    const auto group = computer().dispatch.makeGroup();
    group->enter();
    group->enter();
    group->notify(computer().dispatch.mainQueue(),
                  [this] { note(computer().threads.isMainThread() ? "told on main" : "told elsewhere"); });
    for (int worker = 0; worker < 2; ++worker) {
        computer().dispatch.userInitiatedQueue().asyncAfter(0.02 * worker, [this, group] {
            note("leaves");
            group->leave();
        });
    }
    ASSERT_TRUE(noted(3));
    host().letTimePass(0.05);
    EXPECT_EQ((Notes{"leaves", "leaves", "told on main"}), notes());
}

TEST_F(GroupContract, TellsAtOnceWhenNothingIsUnderWay) {
    computer().dispatch.makeGroup()->notify(computer().dispatch.mainQueue(), [this] { note("told"); });
    EXPECT_TRUE(noted(1));
}

}  // namespace
}  // namespace vantrel::contracts
