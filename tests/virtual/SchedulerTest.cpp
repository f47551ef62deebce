#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <limits>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/threads/Lock.h"
#include "platform/virtual/scheduler/Scheduler.h"
#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {
namespace {

using Rank = Scheduler::Rank;
using Wait = Scheduler::Wait;

/// A scheduler, the notes made on its threads, and the threads.
class Stage {
  public:
    explicit Stage(std::uint64_t seed = 0, bool freeRunning = isFreeRunning())
        : scheduler({seed, freeRunning, [this](const std::string& what) { misuse.push_back(what); }}) {}

    ~Stage() {
        scheduler.waitUntilIdle(1e6);
        while (scheduler.releaseStuck()) scheduler.waitUntilIdle(1e6);
        for (auto& thread : threads) thread.join();
    }

    void start(Rank rank, double notBefore, std::function<void()> body) {
        threads.push_back(scheduler.start(rank, fromSeconds(notBefore), std::move(body)));
    }
    void sleep(double seconds) {
        const Moment wake = later(scheduler.now(), seconds);
        scheduler.wait([wake] { return Due::at(wake); }, Wait::blocked);
    }
    void note(const std::string& text) {
        const std::lock_guard guard(mutex);
        notes += text;
    }

    std::mutex mutex;
    std::string notes;
    std::vector<std::string> misuse;
    Scheduler scheduler;
    std::vector<std::thread> threads;
};

TEST(Scheduler, RunsNothingBeforeTheDriverWaits) {
    Stage stage(0, false);
    stage.start(Rank::worker, 0, [&] { stage.note("a"); });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ("", stage.notes);
    stage.sleep(0);
    EXPECT_EQ("a", stage.notes);
}

TEST(Scheduler, JumpsToTheNextDueMomentWhenNobodyCanRun) {
    Stage stage;
    stage.start(Rank::worker, 0, [&] {
        stage.sleep(3600);
        stage.note(std::to_string(stage.scheduler.now() / 1'000'000'000));
    });
    stage.sleep(7200);
    EXPECT_EQ("3600", stage.notes);
    EXPECT_EQ(fromSeconds(7200), stage.scheduler.now());
}

TEST(Scheduler, WakesSleepersInTheOrderOfTheirMoments) {
    Stage stage;
    for (const int second : {3, 1, 2}) {
        stage.start(Rank::worker, 0, [&stage, second] {
            stage.sleep(second);
            stage.note(std::to_string(second));
        });
    }
    stage.sleep(10);
    EXPECT_EQ("123", stage.notes);
}

TEST(Scheduler, GivesTheDriverItsTurnAfterEverythingThatIsDueAtItsMoment) {
    Stage stage;
    stage.start(Rank::worker, 0, [&] {
        stage.sleep(5);
        stage.note("a");
        stage.sleep(0);
        stage.note("b");
        stage.start(Rank::main, 0, [&] { stage.note("c"); });
        stage.sleep(0.001);
        stage.note("too late");
    });
    stage.sleep(5);
    EXPECT_EQ("abc", stage.notes);
}

TEST(Scheduler, WithTheNaturalOrderPrefersTheWorldThenMainThenTheURLSessionThenOlderWorkersBaton) {
    Stage stage(0, false);
    stage.start(Rank::worker, 1, [&] { stage.note("4"); });
    stage.start(Rank::worker, 1, [&] { stage.note("5"); });
    stage.start(Rank::urlSession, 1, [&] { stage.note("3"); });
    stage.start(Rank::main, 1, [&] { stage.note("2"); });
    stage.start(Rank::world, 1, [&] { stage.note("1"); });
    stage.sleep(1);
    EXPECT_EQ("12345", stage.notes);
}

std::string playSeed(std::uint64_t seed) {
    Stage stage(seed, false);
    for (const char* name : {"a", "b", "c", "d"}) {
        stage.start(Rank::worker, 0, [&stage, name] {
            for (int turn = 0; turn < 5; ++turn) {
                stage.note(name);
                stage.scheduler.yield();
                if (turn == 2) stage.sleep(1);
            }
        });
    }
    stage.sleep(2);
    return stage.notes;
}

TEST(Scheduler, ReplaysASeedExactlyBaton) {
    for (const std::uint64_t seed : {0, 1, 2, 77}) EXPECT_EQ(playSeed(seed), playSeed(seed));
}

TEST(Scheduler, ExploresOtherOrdersWithOtherSeedsBaton) {
    std::set<std::string> orders;
    for (std::uint64_t seed = 0; seed < 20; ++seed) orders.insert(playSeed(seed));
    EXPECT_GT(orders.size(), 15U);
    EXPECT_EQ("aaabbbcccdddaabbccdd", playSeed(0));
}

TEST(Scheduler, LetsOnlyOneThreadRunAtATimeBaton) {
    Stage stage(5, false);
    std::atomic<int> running = 0;
    std::atomic<int> most = 0;
    for (int worker = 0; worker < 8; ++worker) {
        stage.start(Rank::worker, 0, [&] {
            for (int turn = 0; turn < 50; ++turn) {
                const int now = ++running;
                if (now > most) most = now;
                std::this_thread::yield();
                --running;
                stage.scheduler.yield();
            }
        });
    }
    stage.sleep(0);
    EXPECT_EQ(1, most);
}

TEST(Scheduler, IsIdleOnceOnlyRepeatingWorkIsLeft) {
    Stage stage;
    std::atomic<int> beats = 0;
    Moment next = fromSeconds(1);
    stage.start(Rank::main, 0, [&] {
        while (beats < 100) {
            stage.scheduler.wait(
                [&next] {
                    Due due;
                    due.addRepeating(next);
                    return due;
                },
                Wait::idle);
            ++beats;
            stage.scheduler.change([&next] { next += fromSeconds(1); });
        }
    });
    stage.start(Rank::worker, 0, [&] { stage.sleep(2.5); });
    EXPECT_TRUE(stage.scheduler.waitUntilIdle(60));
    EXPECT_EQ(2, beats);
    EXPECT_EQ(fromSeconds(2.5), stage.scheduler.now());
    stage.sleep(100);
    EXPECT_EQ(100, beats);
}

TEST(Scheduler, SaysWhenItDoesNotBecomeIdleInTime) {
    Stage stage;
    stage.start(Rank::worker, 0, [&] { stage.sleep(100); });
    EXPECT_FALSE(stage.scheduler.waitUntilIdle(10));
    EXPECT_EQ(fromSeconds(10), stage.scheduler.now());
}

TEST(Scheduler, ReportsADeadlockAndLetsTheThreadGo) {
    Stage stage;
    stage.start(Rank::worker, 0, [&] {
        if (!stage.scheduler.wait([] { return Due(); }, Wait::blocked)) stage.note("let go");
    });
    EXPECT_TRUE(stage.scheduler.waitUntilIdle(60));
    stage.scheduler.releaseStuck();
    stage.sleep(0);
    EXPECT_EQ("let go", stage.notes);
    ASSERT_EQ(1U, stage.misuse.size());
    EXPECT_EQ("deadlock: a wait that nothing can end", stage.misuse.front());
}

TEST(Scheduler, ReportsADeadlockWhileTheDriverWaitsForGood) {
    Stage stage;
    bool done = false;
    stage.start(Rank::worker, 0, [&] {
        stage.scheduler.wait([] { return Due(); }, Wait::blocked);
        stage.scheduler.change([&done] { done = true; });
    });
    EXPECT_TRUE(stage.scheduler.wait([&done] { return Due::at(done ? 0 : never); }, Wait::idle));
    EXPECT_EQ(std::vector<std::string>{"deadlock: a wait that nothing can end"}, stage.misuse);
}

TEST(Scheduler, RefusesAWaitUnderALock) {
    Stage stage;
    stage.start(Rank::worker, 0, [&] {
        Lock lock;
        const std::lock_guard guard(lock);
        stage.sleep(5);
        stage.note(std::to_string(stage.scheduler.now()));
    });
    stage.sleep(1);
    EXPECT_EQ("0", stage.notes);
    EXPECT_EQ(std::vector<std::string>{"a wait with a lock held"}, stage.misuse);
}

TEST(Scheduler, DoesNotPassTheBatonOnUnderALock) {
    for (std::uint64_t seed = 1; seed < 20; ++seed) {
        Stage stage(seed, false);
        Lock lock;
        for (const char* name : {"a", "b"}) {
            stage.start(Rank::worker, 0, [&stage, &lock, name] {
                const std::lock_guard guard(lock);
                stage.note(name);
                stage.scheduler.yield();
                stage.note(name);
            });
        }
        stage.sleep(0);
        EXPECT_TRUE(stage.notes == "aabb" || stage.notes == "bbaa") << stage.notes;
    }
}

TEST(Scheduler, RunsThreadsSideBySideWhenFreeRunning) {
    Stage stage(0, true);
    std::atomic<int> arrived = 0;
    for (int worker = 0; worker < 2; ++worker) {
        stage.start(Rank::worker, 0, [&] {
            ++arrived;
            while (arrived < 2) std::this_thread::yield();
            stage.note("x");
        });
    }
    stage.sleep(1);
    EXPECT_EQ("xx", stage.notes);
}

TEST(Scheduler, HoldsTheClockWhileAThreadRunsFreely) {
    Stage stage(0, true);
    std::atomic<Moment> seen = never;
    stage.start(Rank::worker, 0, [&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        seen = stage.scheduler.now();
    });
    stage.sleep(5);
    EXPECT_EQ(0, seen);
    EXPECT_EQ(fromSeconds(5), stage.scheduler.now());
}

TEST(Moment, CutsWhatDoesNotFit) {
    EXPECT_EQ(0, fromSeconds(-1));
    EXPECT_EQ(0, fromSeconds(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(never, fromSeconds(1e300));
    EXPECT_EQ(never, later(fromSeconds(9e9), 9e8));
    EXPECT_EQ(100'000'000, fromSeconds(0.1));
}

}  // namespace
}  // namespace vantrel::virtualmac
