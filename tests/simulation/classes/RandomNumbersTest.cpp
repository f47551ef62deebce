#include <gtest/gtest.h>

#include <array>

#include "tests/simulation/classes/RandomNumbers.h"

namespace vantrel::simulation {
namespace {

TEST(RandomNumbers, AreTheSameOnEveryComputer) {
    RandomNumbers numbers(1);
    EXPECT_EQ(numbers.below(1'000'000), 822'465U);
    EXPECT_EQ(numbers.below(1'000'000), 428'519U);
    EXPECT_EQ(numbers.below(1'000'000), 890'590U);
}

TEST(RandomNumbers, StayWithinTheirBoundsAndReachThem) {
    RandomNumbers numbers(2);
    bool least = false;
    bool most = false;
    for (int draw = 0; draw < 1'000; ++draw) {
        const auto number = numbers.from(-3, 4);
        ASSERT_GE(number, -3);
        ASSERT_LE(number, 4);
        least = least || number == -3;
        most = most || number == 4;
        ASSERT_EQ(numbers.moment(0, 500) % 10, 0);
    }
    EXPECT_TRUE(least && most);
}

TEST(RandomNumbers, ComeByTheirWeight) {
    constexpr std::array<int, 3> weights = {1, 0, 9};
    std::array<int, 3> drawn{};
    RandomNumbers numbers(3);
    for (int draw = 0; draw < 10'000; ++draw) ++drawn[numbers.weighted(weights)];
    EXPECT_NEAR(drawn[0], 1'000, 150);
    EXPECT_EQ(drawn[1], 0);
}

}  // namespace
}  // namespace vantrel::simulation
