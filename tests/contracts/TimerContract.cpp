#include <atomic>
#include <mutex>

#include "tests/contracts/ContractTest.h"

namespace vantrel::contracts {
namespace {

class TimerContract : public ContractTest {
  protected:
    void TearDown() override {
        host().onMain([this] { timer_.reset(); });
        ContractTest::TearDown();
    }

    void schedule(double interval, bool repeats, Block block) {
        host().onMain([this, interval, repeats, &block] {
            timer_ = computer().mainRunLoop.scheduledTimer(interval, repeats, std::move(block));
        });
    }
    void noteTime() {
        const std::lock_guard guard(mutex_);
        times_.push_back(now());
    }
    std::vector<double> times() {
        const std::lock_guard guard(mutex_);
        return times_;
    }

    std::unique_ptr<Timer> timer_;

  private:
    std::mutex mutex_;
    std::vector<double> times_;
};

TEST_F(TimerContract, ARepeatingTimerComesNoEarlierThanItsGridOnTheMainThread) {
    const double start = now();
    std::atomic<bool> elsewhere = false;
    schedule(0.1, true, [&] {
        if (!computer().threads.isMainThread()) elsewhere = true;
        noteTime();
    });
    ASSERT_TRUE(eventually([&] { return times().size() >= 3; }));
    host().onMain([this] { timer_->invalidate(); });
    const auto seen = times();
    for (std::size_t index = 0; index < 3; ++index) {
        EXPECT_GE(seen[index] - start, 0.1 * static_cast<double>(index + 1) - tolerance);
    }
    EXPECT_FALSE(elsewhere);
}

TEST_F(TimerContract, ATimerThatDoesNotRepeatComesOnce) {
    schedule(0.05, false, [this] { note("tick"); });
    ASSERT_TRUE(noted(1));
    host().letTimePass(0.2);
    EXPECT_EQ(Notes{"tick"}, notes());
}

TEST_F(TimerContract, AnInvalidatedTimerDoesNotComeAgain) {
    schedule(0.05, true, [this] { note("tick"); });
    timer_->invalidate();
    timer_->invalidate();
    // A call that had begun when the timer was invalidated has ended after the next event.
    host().onMain([] {});
    const auto before = notes();
    host().letTimePass(0.2);
    EXPECT_EQ(before, notes());
}

TEST_F(TimerContract, ADestroyedTimerDoesNotComeAgain) {
    schedule(0.05, true, [this] { note("tick"); });
    host().onMain([this] { timer_.reset(); });
    const auto before = notes();
    host().letTimePass(0.2);
    EXPECT_EQ(before, notes());
}

TEST_F(TimerContract, ATimerMayBeDestroyedFromItsOwnBlock) {
    const auto owned = std::make_shared<std::string>("alive");
    const std::weak_ptr<std::string> watch = owned;
    schedule(0.02, true, [this, owned] {
        timer_.reset();
        note(*owned);
    });
    ASSERT_TRUE(noted(1));
    host().letTimePass(0.1);
    EXPECT_EQ(Notes{"alive"}, notes());
}

TEST_F(TimerContract, ABlockThatDestroysItsTimerLivesUntilItReturns) {
    std::weak_ptr<int> watched;
    host().onMain([&] {
        auto owned = std::make_shared<int>();
        watched = owned;
        const auto run = [this, &watched] {
            timer_.reset();
            note(watched.expired() ? "already gone" : "still there");
        };
        timer_ = computer().mainRunLoop.scheduledTimer(0.02, true, [owned, run] {
            const auto running = run;
            running();
        });
    });
    ASSERT_TRUE(noted(1));
    EXPECT_EQ(notes(), Notes{"still there"});
    EXPECT_TRUE(eventually([&] { return watched.expired(); }));
}

TEST_F(TimerContract, ALateRepeatingTimerComesOnceAndKeepsItsGrid) {
    std::atomic<double> start = 0;
    host().onMain([&] {
        start = now();
        timer_ = computer().mainRunLoop.scheduledTimer(0.2, true, [this] { noteTime(); });
        computer().threads.sleep(0.7);
    });
    ASSERT_TRUE(eventually([&] { return times().size() >= 2; }));
    host().onMain([this] { timer_->invalidate(); });
    const auto seen = times();
    EXPECT_GE(seen[0] - start, 0.7 - tolerance) << "the main thread slept";
    EXPECT_GE(seen[1] - start, 0.8 - tolerance) << "the missed moments do not come one by one";
}

}  // namespace
}  // namespace vantrel::contracts
