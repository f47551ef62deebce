#include <gtest/gtest.h>

#include "rules/Door.h"

namespace door {
namespace {

TEST(Door, LetsInWhoHasATicketUntilTheHouseIsFull) {
    const auto log = std::make_shared<std::vector<std::string>>();
    Door door(log);
    EXPECT_FALSE(door.enter("yesterday"));
    EXPECT_EQ(door.light(), Light::green);
    EXPECT_TRUE(door.enter("day"));
    EXPECT_EQ(door.light(), Light::green);
    EXPECT_TRUE(door.enter("day"));
    EXPECT_EQ(door.light(), Light::red);
    EXPECT_FALSE(door.enter("day"));
    EXPECT_EQ(door.inside(), 2);
    // The order is left to a reader.
    EXPECT_EQ(log->size(), 4U);
    EXPECT_NE(std::find(log->begin(), log->end(), "in"), log->end());
}

TEST(Door, NamesItsLights) {
    EXPECT_EQ(name(Light::green), "green");
    EXPECT_EQ(name(Light::off), "");
}

TEST(Door, CountsWhatIsPaid) {
    EXPECT_EQ(paidFor(0), 0);
    EXPECT_EQ(paidFor(5), 2);
}

}  // namespace
}  // namespace door
