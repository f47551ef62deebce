#include <gtest/gtest.h>

#include "rehearsal/playing/FirstDifference.h"

namespace vantrel::rehearsal {
namespace {

TEST(FirstDifference, IsEmptyForTheSameBytes) {
    EXPECT_EQ(firstDifference("", ""), "");
    EXPECT_EQ(firstDifference("a\nb\n", "a\nb\n"), "");
}

TEST(FirstDifference, TellsTheLineAsBothHaveIt) {
    EXPECT_EQ(firstDifference("a\nb\nc\n", "a\nx\nc\n"), "line 2\n  kept:   b\n  played: x");
    EXPECT_EQ(firstDifference("a\nb\n", "a\nbb\n"), "line 2\n  kept:   b\n  played: bb");
}

TEST(FirstDifference, TellsWhereOneEnds) {
    EXPECT_EQ(firstDifference("a\n", "a\nb\n"), "line 2\n  kept:   (nothing more)\n  played: b");
    EXPECT_EQ(firstDifference("a\nb\n", "a\n"), "line 2\n  kept:   b\n  played: (nothing more)");
    EXPECT_EQ(firstDifference("", "\n"), "line 1\n  kept:   (nothing more)\n  played: ");
}

TEST(FirstDifference, MindsALineBreakAtTheEnd) {
    EXPECT_EQ(firstDifference("a", "a\n"), "line 1\n  kept:   a (without a line break)\n  played: a");
}

}  // namespace
}  // namespace vantrel::rehearsal
