#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <thread>
#include <vector>

#include "platform/linux/threads/BackgroundQueue.h"
#include "platform/linux/threads/DelayedWork.h"
#include "platform/linux/threads/LinuxSemaphore.h"
#include "platform/linux/threads/SerialQueue.h"

namespace vantrel::linuxdesktop {
namespace {

using namespace std::chrono_literals;

TEST(DelayedWork, KeepsTheOrderOfMomentsAndOfEqualMoments) {
    DelayedWork work;
    std::vector<int> order;
    std::promise<void> done;
    work.after(0.15, [&] {
        order.push_back(4);
        done.set_value();
    });
    work.after(0.05, [&] { order.push_back(2); });
    work.after(0.10, [&] { order.push_back(3); });
    work.after(-1, [&] { order.push_back(1); });
    done.get_future().get();
    EXPECT_EQ(order, (std::vector{1, 2, 3, 4}));
}

TEST(DelayedWork, DropsWhatStillWaitsWhenItDies) {
    bool ran = false;
    {
        DelayedWork work;
        work.after(60, [&ran] { ran = true; });
    }
    EXPECT_FALSE(ran);
}

TEST(BackgroundQueue, RunsBlocksSideBySide) {
    DelayedWork work;
    BackgroundQueue queue(work);
    std::promise<void> first;
    std::promise<void> second;
    queue.async([&] {
        first.set_value();
        second.get_future().get();
    });
    queue.async([&] {
        first.get_future().get();
        second.set_value();
    });
    queue.waitUntilIdle();
}

TEST(BackgroundQueue, WaitsForItsBlocksWhenItDies) {
    DelayedWork work;
    std::atomic<bool> ended = false;
    {
        BackgroundQueue queue(work);
        queue.async([&ended] {
            std::this_thread::sleep_for(100ms);
            ended = true;
        });
    }
    EXPECT_TRUE(ended);
}

TEST(SerialQueue, RunsBlocksInOrderAndAllOfThemBeforeItDies) {
    std::vector<int> order;
    {
        SerialQueue queue;
        for (int i = 0; i < 100; ++i) queue.async([&order, i] { order.push_back(i); });
    }
    ASSERT_EQ(order.size(), 100u);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(LinuxSemaphore, CountsSignalsAndTimesOutNotBeforeItsTime) {
    LinuxSemaphore semaphore(1);
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_FALSE(semaphore.wait(0));
    EXPECT_FALSE(semaphore.wait(-5));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(semaphore.wait(0.1));
    EXPECT_GE(std::chrono::steady_clock::now() - start, 100ms);
    semaphore.signal();
    semaphore.signal();
    EXPECT_TRUE(semaphore.wait(10));
    EXPECT_TRUE(semaphore.wait(1e300));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
