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
    MainThreadPulse pulse{[this](Block block) { posted.push_back(std::move(block)); }};
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

TEST_F(MainThreadPulseTest, IsAnsweredAfterItsEndWithoutHarm) {
    {
        MainThreadPulse shortLived{[this](Block block) { posted.push_back(std::move(block)); }};
        shortLived.ask(start);
    }
    ASSERT_EQ(posted.size(), 1U);
    answer();
}

}  // namespace
}  // namespace vantrel::linuxdesktop
