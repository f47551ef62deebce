#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "lockdown/WholePart.h"
#include "lockdown/WindowDeviation.h"
#include "tests/lockdown/NextNumber.h"

namespace vantrel {
namespace {

constexpr Rect display{{0, 0}, {1000, 500}};

bool isMoved(double x, double y, const Rect& on = display) {
    return windowDeviation({{x, y}, on.size}, on).moved;
}

bool isSizeCorrect(double width, double height) {
    return windowDeviation({{0, 0}, {width, height}}, display).sizeCorrect;
}

TEST(WindowDeviation, IsNoneForAWindowThatFillsTheScreen) {
    EXPECT_TRUE(windowDeviation(display, display).isNone());
}

TEST(WindowDeviation, ToleratesAMoveOfOnePercent) {
    EXPECT_FALSE(isMoved(10, 5));
    EXPECT_FALSE(isMoved(-10, -5));
    EXPECT_FALSE(isMoved(justBelow(10), justBelow(5)));
    EXPECT_TRUE(isMoved(justAbove(10), 0));
    EXPECT_TRUE(isMoved(justBelow(-10), 0));
    EXPECT_TRUE(isMoved(0, justAbove(5)));
    EXPECT_TRUE(isMoved(0, justBelow(-5)));
}

TEST(WindowDeviation, ComparesOriginsAsTheyStand) {
    const Rect right{{1440, -180}, {1000, 500}};
    EXPECT_FALSE(isMoved(1440, -180, right));
    EXPECT_FALSE(isMoved(1450, -175, right));
    EXPECT_TRUE(isMoved(1440, 180, right));
    EXPECT_TRUE(isMoved(0, 0, right));
}

TEST(WindowDeviation, TakesNineTenthsOfTheWidthAndEightOfTheHeightForCorrect) {
    EXPECT_TRUE(isSizeCorrect(900, 400));
    EXPECT_TRUE(isSizeCorrect(justAbove(900), justAbove(400)));
    EXPECT_FALSE(isSizeCorrect(899.999, 500));
    EXPECT_FALSE(isSizeCorrect(1000, 399.999));
    EXPECT_TRUE(isSizeCorrect(2000, 1000));
    EXPECT_FALSE(isSizeCorrect(0, 0));
}

TEST(WindowDeviation, TellsTheRatios) {
    const auto deviation = windowDeviation({{0, 0}, {500, 499}}, display);
    EXPECT_DOUBLE_EQ(deviation.widthRatio, 0.5);
    EXPECT_DOUBLE_EQ(deviation.heightRatio, 0.998);
    EXPECT_FALSE(deviation.isNone());
}

TEST(WholePart, GoesTowardsZero) {
    EXPECT_EQ(wholePart(0.99), 0);
    EXPECT_EQ(wholePart(-0.99), 0);
    EXPECT_EQ(wholePart(99.999), 99);
    EXPECT_EQ(wholePart(-12.7), -12);
}

TEST(WholePart, HasAnAnswerForEveryNumber) {
    EXPECT_EQ(wholePart(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(wholePart(std::numeric_limits<double>::infinity()), 1'000'000'000'000'000);
    EXPECT_EQ(wholePart(-1e300), -1'000'000'000'000'000);
}

}  // namespace
}  // namespace vantrel
