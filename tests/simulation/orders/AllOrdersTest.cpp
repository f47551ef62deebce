#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/simulation/orders/AllOrders.h"

namespace vantrel::simulation {
namespace {

using Choices = AllOrders::Choices;

/// Choices with so many alternatives each, whatever is chosen. The transcript tells those of `telling`.
AllOrders::Play choosing(const Choices& alternatives, const std::set<std::size_t>& telling) {
    return [=](const Choices& choices) {
        std::string transcript;
        for (const auto place : telling) transcript += std::to_string(place < choices.size() ? choices[place] : 0);
        return AllOrders::Played{transcript, alternatives};
    };
}

std::set<std::string> judged(AllOrders& all) {
    std::set<std::string> transcripts;
    all.explore([&](const Choices&, const std::string& transcript) {
        EXPECT_TRUE(transcripts.insert(transcript).second) << transcript << " came twice";
    });
    return transcripts;
}

TEST(AllOrders, PlaysEveryOrderOnce) {
    AllOrders all(choosing({2, 3, 2}, {0, 1, 2}), 1'000);
    EXPECT_EQ(judged(all).size(), 12U);
    const auto count = all.explore([](const Choices&, const std::string&) {});
    EXPECT_EQ(count.orders, 12U);
    EXPECT_EQ(count.transcripts, 12U);
    EXPECT_EQ(count.reduced, 0U);
    EXPECT_TRUE(count.complete);
}

TEST(AllOrders, FollowsChoicesThatOnlyAnotherChoiceBrings) {
    AllOrders all(
        [](const Choices& choices) {
            const bool second = !choices.empty() && choices[0] == 1;
            std::string transcript = second ? "b" : "a";
            if (second) transcript += choices.size() > 1 ? std::to_string(choices[1]) : "0";
            return AllOrders::Played{transcript, second ? Choices{2, 3} : Choices{2}};
        },
        1'000);
    EXPECT_EQ(judged(all), (std::set<std::string>{"a", "b0", "b1", "b2"}));
}

TEST(AllOrders, DoesNotPermuteAgainWhatFollowsAChoiceWithoutAnEffect) {
    AllOrders all(choosing({2, 2, 2}, {1, 2}), 1'000);
    EXPECT_EQ(judged(all).size(), 4U);
    const auto count = all.explore([](const Choices&, const std::string&) {});
    EXPECT_EQ(count.orders, 5U);
    EXPECT_EQ(count.reduced, 1U);
}

TEST(AllOrders, SaysThatThereAreMoreThanAllowed) {
    AllOrders all(choosing({4, 4, 4}, {0, 1, 2}), 10);
    const auto count = all.explore([](const Choices&, const std::string&) {});
    EXPECT_EQ(count.orders, 10U);
    EXPECT_FALSE(count.complete);
}

}  // namespace
}  // namespace vantrel::simulation
