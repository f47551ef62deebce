#include <gtest/gtest.h>

#include <vector>

#include "platform/linux/keyboard/MainThreadPulse.h"

namespace vantrel::linuxdesktop {
namespace {

using namespace std::chrono_literals;

class MainThreadPulseTest : public testing::Test {
  protected:
    void answer() {
        for (const Block& block : posted) block();
        posted.clear();
    }

    std::vector<Block> posted;
    std::chrono::nanoseconds waited{5h};
    MainThreadPulse pulse{[this](Block block) { posted.push_back(std::move(block)); }, [this] { return waited; }};
    const MainThreadPulse::Time start{};
};

TEST_F(MainThreadPulseTest, IsNeverOverdueUnasked) {
    EXPECT_FALSE(pulse.isOverdue(start + 1h));
    EXPECT_EQ(pulse.due(), std::nullopt);
}

TEST_F(MainThreadPulseTest, IsOverdueAfterASecondWithoutAnAnswer) {
    pulse.ask(start);
    EXPECT_EQ(pulse.due(), start + 1s);
    EXPECT_FALSE(pulse.isOverdue(start + 999ms));
    EXPECT_TRUE(pulse.isOverdue(start + 1s));
}

TEST_F(MainThreadPulseTest, IsDueNoMoreOnceTheAnswerIsSeen) {
    pulse.ask(start);
    answer();
    EXPECT_FALSE(pulse.isOverdue(start + 5s));
    EXPECT_EQ(pulse.due(), std::nullopt);
}

TEST_F(MainThreadPulseTest, AsksOneQuestionAtATimeAndCountsFromTheOldest) {
    pulse.ask(start);
    pulse.ask(start + 900ms);
    EXPECT_EQ(posted.size(), 1U);
    EXPECT_TRUE(pulse.isOverdue(start + 1s));
}

TEST_F(MainThreadPulseTest, AsksAnewAfterAnAnswer) {
    pulse.ask(start);
    answer();
    pulse.ask(start + 900ms);
    EXPECT_EQ(posted.size(), 1U);
    EXPECT_FALSE(pulse.isOverdue(start + 1899ms));
    EXPECT_TRUE(pulse.isOverdue(start + 1900ms));
}

TEST_F(MainThreadPulseTest, DoesNotCountTheTimeInWhichTheMainThreadWaitsForAProcessor) {
    pulse.ask(start);
    waited += 900ms;
    EXPECT_FALSE(pulse.isOverdue(start + 1s));
    EXPECT_EQ(pulse.due(), start + 1900ms);
    waited += 600ms;
    EXPECT_FALSE(pulse.isOverdue(start + 2s));
    EXPECT_FALSE(pulse.isOverdue(start + 2499ms));
    EXPECT_TRUE(pulse.isOverdue(start + 2500ms)) << "it hangs: it waits for no processor any more";
    answer();
    EXPECT_FALSE(pulse.isOverdue(start + 3s));
    pulse.ask(start + 3s);
    EXPECT_TRUE(pulse.isOverdue(start + 4s)) << "what it waited before is not counted again";
}

TEST_F(MainThreadPulseTest, IsAnsweredAfterItsEndWithoutHarm) {
    {
        MainThreadPulse shortLived{[this](Block block) { posted.push_back(std::move(block)); }, [] { return 0ns; }};
        shortLived.ask(start);
    }
    ASSERT_EQ(posted.size(), 1U);
    answer();
}

}  // namespace
}  // namespace vantrel::linuxdesktop
