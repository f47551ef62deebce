#include <gtest/gtest.h>

#include "tests/simulation/program/Counts.h"

namespace vantrel::simulation {
namespace {

TEST(Counts, AddUp) {
    Counts all{{"ends: by the server", {1, 1, 1}}};
    add(all, {{"ends: by the server", {2, 1, 1}}, {"alerts: Uno", {1, 0, 1}}});
    EXPECT_EQ(all, (Counts{{"ends: by the server", {3, 2, 2}}, {"alerts: Uno", {1, 0, 1}}}));
}

TEST(Counts, AreATableByGroupWithTheMostFrequentFirst) {
    EXPECT_EQ(table({{"ends: a", {1, 0, 1}}, {"ends: b", {12, 3, 4}}, {"alerts: z", {1, 1, 1}}}),
              "     times  in a lockdown    classes  situation\n"
              "         1              1          1  alerts: z\n"
              "        12              3          4  ends: b\n"
              "         1              0          1  ends: a\n");
}

}  // namespace
}  // namespace vantrel::simulation
