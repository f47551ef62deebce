#include <gtest/gtest.h>
#include <sched.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "platform/linux/threads/ProcessorWait.h"

namespace vantrel::linuxdesktop {
namespace {

using namespace std::chrono_literals;

void stayOnTheFirstProcessor() {
    cpu_set_t first;
    CPU_ZERO(&first);
    CPU_SET(0, &first);
    sched_setaffinity(0, sizeof first, &first);
}

// Runs a thread until the block has returned.
template <typename Work, typename Block>
void beside(Work work, Block block) {
    std::atomic<pid_t> thread = 0;
    std::atomic<bool> done = false;
    std::thread other([&] {
        stayOnTheFirstProcessor();
        thread = gettid();
        while (!done) work();
    });
    while (thread == 0) std::this_thread::yield();
    block(thread.load());
    done = true;
    other.join();
}

TEST(ProcessorWait, GrowsWhileOthersHaveTheProcessor) {
    std::atomic<int> rounds = 0;
    beside([&] { ++rounds; },
           [&](pid_t) {
               beside([&] { ++rounds; },
                      [](pid_t crowded) {
                          const ProcessorWait wait(crowded);
                          const auto before = wait.total();
                          for (int i = 0; i < 500 && wait.total() - before < 200ms; ++i)
                              std::this_thread::sleep_for(20ms);
                          EXPECT_GE(wait.total() - before, 200ms);
                      });
           });
}

TEST(ProcessorWait, DoesNotGrowWhileTheThreadSleeps) {
    beside([] { std::this_thread::sleep_for(600ms); },
           [](pid_t sleeping) {
               const ProcessorWait wait(sleeping);
               std::this_thread::sleep_for(100ms);
               const auto before = wait.total();
               std::this_thread::sleep_for(300ms);
               EXPECT_LT(wait.total() - before, 300ms);
           });
}

TEST(ProcessorWait, IsNothingForAThreadThatDoesNotExist) {
    EXPECT_EQ(ProcessorWait(0x7fffffff).total(), 0ns);
}

}  // namespace
}  // namespace vantrel::linuxdesktop
