#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "lockdown/WholePart.h"
#include "lockdown/WindowDeviation.h"

namespace vantrel {
namespace {

constexpr Rect screen{{0, 0}, {1000, 500}};
constexpr double huge = 1e9;

double above(double value) {
    return std::nextafter(value, huge);
}
double below(double value) {
    return std::nextafter(value, -huge);
}

bool isMoved(double x, double y, const Rect& on = screen) {
    return windowDeviation({{x, y}, on.size}, on).moved;
}

bool isSizeCorrect(double width, double height) {
    return windowDeviation({{0, 0}, {width, height}}, screen).sizeCorrect;
}

TEST(WindowDeviation, IsNoneForAWindowThatFillsTheScreen) {
    EXPECT_TRUE(windowDeviation(screen, screen).isNone());
}

TEST(WindowDeviation, ToleratesAMoveOfOnePercent) {
    EXPECT_FALSE(isMoved(10, 5));
    EXPECT_FALSE(isMoved(-10, -5));
    EXPECT_FALSE(isMoved(below(10), below(5)));
    EXPECT_TRUE(isMoved(above(10), 0));
    EXPECT_TRUE(isMoved(below(-10), 0));
    EXPECT_TRUE(isMoved(0, above(5)));
    EXPECT_TRUE(isMoved(0, below(-5)));
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
    EXPECT_TRUE(isSizeCorrect(above(900), above(400)));
    EXPECT_FALSE(isSizeCorrect(899.999, 500));
    EXPECT_FALSE(isSizeCorrect(1000, 399.999));
    EXPECT_TRUE(isSizeCorrect(2000, 1000));
    EXPECT_FALSE(isSizeCorrect(0, 0));
}

TEST(WindowDeviation, TellsTheRatios) {
    const auto deviation = windowDeviation({{0, 0}, {500, 499}}, screen);
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
    EXPECT_GT(wholePart(std::numeric_limits<double>::infinity()), 1000000);
    EXPECT_LT(wholePart(-1e300), -1000000);
}

}  // namespace
}  // namespace vantrel
