#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/virtual/VirtualMac.h"
#include "tests/simulation/orders/ChoiceSequence.h"

namespace vantrel::simulation {
namespace {

using Choices = std::vector<std::size_t>;

TEST(ChoiceSequence, MakesTheGivenChoicesAndThenTheNaturalOnes) {
    ChoiceSequence sequence({0, 100, 0}, {2, 1});
    EXPECT_EQ(sequence.choose(3, 0), 2U);
    EXPECT_EQ(sequence.choose(2, 50), 1U);
    EXPECT_EQ(sequence.choose(4, 100), 0U);
    EXPECT_EQ(sequence.alternatives(), (Choices{3, 2, 4}));
}

TEST(ChoiceSequence, LeavesWhatIsOutsideOfItsSpanInTheNaturalOrder) {
    ChoiceSequence sequence({10, 20, 1}, {1});
    EXPECT_EQ(sequence.choose(2, 9), 0U);
    EXPECT_EQ(sequence.interrupt(2, 21), 0U);
    EXPECT_EQ(sequence.choose(2, 15), 1U);
    EXPECT_EQ(sequence.alternatives(), Choices{2});
}

TEST(ChoiceSequence, InterruptsNoMoreOftenThanItMay) {
    ChoiceSequence sequence({0, 100, 1}, {0, 2, 1});
    EXPECT_EQ(sequence.interrupt(1, 0), 0U);
    EXPECT_EQ(sequence.interrupt(2, 0), 2U);
    EXPECT_EQ(sequence.interrupt(3, 0), 0U);
    EXPECT_EQ(sequence.alternatives(), (Choices{2, 3}));
}

/// What two threads do at the same moment, in the order of these choices.
std::string written(const Choices& choices, int interruptions) {
    std::string text;
    virtualmac::Options options;
    options.choices = std::make_shared<ChoiceSequence>(
        ChoiceSequence::Span{virtualmac::fromSeconds(1), virtualmac::fromSeconds(2), interruptions}, choices);
    virtualmac::VirtualMac mac(options);
    mac.runFor(1);
    for (const char* name : {"A", "B"}) {
        mac.inBackground([&mac, &text, name] {
            text += name;
            mac.computer().clock.uptime();
            text += name;
        });
    }
    mac.runFor(1);
    return text;
}

TEST(ChoiceSequence, OrdersTheThreadsOfAVirtualMac) {
    EXPECT_EQ(written({}, 0), "AABB");
    EXPECT_EQ(written({1}, 0), "BBAA");
    EXPECT_EQ(written({0, 1}, 1), "ABBA");
}

}  // namespace
}  // namespace vantrel::simulation
