#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "platform/portable/CountingDispatchGroup.h"

namespace vantrel {
namespace {

class ImmediateQueue final : public DispatchQueue {
  public:
    void async(Block block) override { block(); }
    void asyncAfter(double, Block block) override { block(); }
};

TEST(DispatchGroup, NotifiesAtOnceWhenNothingIsUnderWay) {
    CountingDispatchGroup group;
    ImmediateQueue queue;
    int told = 0;
    group.notify(queue, [&] { ++told; });
    EXPECT_EQ(1, told);
}

TEST(DispatchGroup, NotifiesOnceWhenTheLastPieceOfWorkLeaves) {
    CountingDispatchGroup group;
    ImmediateQueue queue;
    int told = 0;
    group.enter();
    group.enter();
    group.notify(queue, [&] { ++told; });
    group.leave();
    EXPECT_EQ(0, told);
    group.leave();
    EXPECT_EQ(1, told);
    group.enter();
    group.leave();
    EXPECT_EQ(1, told);
}

TEST(DispatchGroup, CountsAcrossThreads) {
    for (int round = 0; round < 50; ++round) {
        CountingDispatchGroup group;
        ImmediateQueue queue;
        std::atomic<int> told = 0;
        std::vector<std::thread> threads;
        for (int index = 0; index < 4; ++index) group.enter();
        for (int index = 0; index < 4; ++index) threads.emplace_back([&] { group.leave(); });
        group.notify(queue, [&] { ++told; });
        for (auto& thread : threads) thread.join();
        EXPECT_EQ(1, told);
    }
}

TEST(DispatchGroupDeathTest, EndsTheProcessWhenOneLeavesTooOften) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(CountingDispatchGroup().leave(), "leave without enter");
}

}  // namespace
}  // namespace vantrel
