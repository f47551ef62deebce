#include <gtest/gtest.h>

#include "lockdown/RectangleText.h"

namespace vantrel {
namespace {

TEST(RectangleText, HasOneDecimalForWholeNumbers) {
    EXPECT_EQ(rectangleText({{1440, 0}, {1920, 1080}}), "(1440.0, 0.0, 1920.0, 1080.0)");
    EXPECT_EQ(rectangleText({{-100000, -1080}, {1000000, 1}}), "(-100000.0, -1080.0, 1000000.0, 1.0)");
}

TEST(RectangleText, HasTheDecimalsThatAreNeeded) {
    EXPECT_EQ(rectangleText({{0.5, -0.25}, {1366.1, 1e-3}}), "(0.5, -0.25, 1366.1, 0.001)");
}

}  // namespace
}  // namespace vantrel
