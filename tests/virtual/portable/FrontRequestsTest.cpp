#include <gtest/gtest.h>

#include <string>

#include "platform/portable/FrontRequests.h"

namespace vantrel {
namespace {

constexpr ProcessIdentifier browser = 501;
constexpr ProcessIdentifier other = 502;

/// Answers as it is told to, and writes down what it is asked.
class Ways final : public WaysToFront {
  public:
    bool isInFront() const override { return inFront; }
    bool activate() override { return ask("activate", accepts); }
    bool activateFromFrontmost() override { return ask(" from", acceptsFrom); }
    bool makeFrontmost() override { return ask(" attribute", acceptsAttribute); }

    std::string asked;
    bool inFront = false;
    bool accepts = true;
    bool acceptsFrom = true;
    bool acceptsAttribute = true;

  private:
    bool ask(const char* way, bool answer) {
        asked += way;
        return answer;
    }
};

class FrontRequestsTest : public testing::Test {
  protected:
    std::string asked(double uptime, ProcessIdentifier process = browser) {
        ways.asked.clear();
        accepted = requests.bring(process, uptime, ways);
        return ways.asked;
    }

    Ways ways;
    bool accepted = false;

  private:
    FrontRequests requests;
};

TEST_F(FrontRequestsTest, TheUsualCallIsTheOnlyOneWhereItIsAccepted) {
    EXPECT_EQ("activate", asked(10));
    EXPECT_TRUE(accepted);
}

TEST_F(FrontRequestsTest, WhatIsDeclinedIsTriedInTheNextWay) {
    ways.accepts = false;
    EXPECT_EQ("activate from", asked(10));
    EXPECT_TRUE(accepted);
    ways.acceptsFrom = false;
    EXPECT_EQ("activate from attribute", asked(20));
    EXPECT_TRUE(accepted);
    ways.acceptsAttribute = false;
    EXPECT_EQ("activate from attribute", asked(30));
    EXPECT_FALSE(accepted);
}

TEST_F(FrontRequestsTest, WhatIsAcceptedAndNotDoneIsTriedInEveryWayTheNextTime) {
    EXPECT_EQ("activate", asked(10));
    EXPECT_EQ("activate from attribute", asked(11.5));
    EXPECT_EQ("activate from attribute", asked(13));
    ways.acceptsFrom = ways.acceptsAttribute = false;
    asked(14.5);
    EXPECT_TRUE(accepted);
}

TEST_F(FrontRequestsTest, ARequestIsGivenASecond) {
    EXPECT_EQ("activate", asked(10));
    EXPECT_EQ("activate", asked(10));
    EXPECT_EQ("activate", asked(10.9));
    EXPECT_EQ("activate from attribute", asked(11));
}

TEST_F(FrontRequestsTest, ARequestOfLongAgoSaysNothing) {
    EXPECT_EQ("activate", asked(10));
    EXPECT_EQ("activate", asked(15));
    EXPECT_EQ("activate", asked(9)) << "another clock";
}

TEST_F(FrontRequestsTest, ARequestThatWasFollowedSaysNothing) {
    EXPECT_EQ("activate", asked(10));
    ways.inFront = true;
    EXPECT_EQ("activate", asked(11.5));
    ways.inFront = false;
    EXPECT_EQ("activate", asked(13));
}

TEST_F(FrontRequestsTest, ARequestForAnotherApplicationSaysNothing) {
    EXPECT_EQ("activate", asked(10));
    EXPECT_EQ("activate", asked(11.5, other));
    EXPECT_EQ("activate", asked(13));
}

}  // namespace
}  // namespace vantrel
