#include <gtest/gtest.h>

#include <string>

#include "practice/program/ConnectionPlaces.h"

namespace vantrel::practice::test {
namespace {

class Places : public testing::Test {
  protected:
    std::uint64_t begin(const std::string& name) {
        return places.begin([this, name] { ended += name; });
    }

    ConnectionPlaces places{2};
    std::string ended;
};

TEST_F(Places, EndNobodyWhileThereAreEnough) {
    begin("a");
    begin("b");
    EXPECT_EQ(ended, "");
    EXPECT_TRUE(places.mayAccept());
}

TEST_F(Places, OneTooManyEndsTheOneAwaitedLongest) {
    const auto first = begin("a");
    begin("b");
    begin("c");
    EXPECT_EQ(ended, "a");
    EXPECT_FALSE(places.over(first));
    begin("d");
    EXPECT_EQ(ended, "ab");
}

TEST_F(Places, WhoseRequestHasComeIsNotEnded) {
    places.requestHasCome(begin("a"));
    begin("b");
    begin("c");
    EXPECT_EQ(ended, "b");
}

TEST_F(Places, TheNewOneIsNotEndedForItself) {
    places.requestHasCome(begin("a"));
    places.requestHasCome(begin("b"));
    begin("c");
    EXPECT_EQ(ended, "");
}

TEST_F(Places, WhenAllAreAnsweredWhoeverAcceptsWaitsForOneToEnd) {
    const auto first = begin("a");
    const auto second = begin("b");
    places.requestHasCome(first);
    EXPECT_TRUE(places.mayAccept());
    places.requestHasCome(second);
    EXPECT_FALSE(places.mayAccept());
    EXPECT_TRUE(places.over(first));
    EXPECT_TRUE(places.mayAccept());
    EXPECT_FALSE(places.over(second));
}

TEST_F(Places, MakePlaceEndsOneIfThereIsOne) {
    places.makePlace();
    begin("a");
    places.makePlace();
    places.makePlace();
    EXPECT_EQ(ended, "a");
}

}  // namespace
}  // namespace vantrel::practice::test
