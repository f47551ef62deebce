#include <gtest/gtest.h>

#include <algorithm>

#include "tests/simulation/program/Shrinker.h"

namespace vantrel::simulation {
namespace {

bool has(const WrittenClass& written, const std::string& action) {
    return std::any_of(written.timeline.begin(), written.timeline.end(), [&](const WrittenStep& step) {
        return std::find(step.actions.begin(), step.actions.end(), action) != step.actions.end();
    });
}

WrittenClass sample() {
    WrittenClass written;
    written.mac = {"macos: 15", "seed: 7", "camera: undecided"};
    written.replies = {"{to: A}", "{to: B}", "{to: C}"};
    for (int second = 1; second <= 30; ++second) {
        written.timeline.push_back({second * 1'000, {"key: " + std::to_string(second)}});
    }
    written.timeline.push_back({31'000, {"key: x", "key: y", "key: z"}});
    written.until = 60'000;
    return written;
}

TEST(Shrinker, LeavesWhatIsOfInterestAndNothingElse) {
    const auto isOfInterest = [](const WrittenClass& written) {
        const bool seeded = std::find(written.mac.begin(), written.mac.end(), "seed: 7") != written.mac.end();
        return seeded && has(written, "key: 17") && has(written, "key: y");
    };
    const auto shrunk = Shrinker(isOfInterest, 10'000).shrink(sample());
    EXPECT_EQ(shrunk.mac, std::vector<std::string>{"seed: 7"});
    EXPECT_TRUE(shrunk.replies.empty());
    ASSERT_EQ(shrunk.timeline.size(), 2U);
    EXPECT_EQ(shrunk.timeline[0].at, 0);
    EXPECT_EQ(shrunk.timeline[1].actions, std::vector<std::string>{"key: y"});
    EXPECT_EQ(shrunk.until, 0);
}

TEST(Shrinker, KeepsAPauseThatIsNeeded) {
    const auto isOfInterest = [](const WrittenClass& written) {
        return has(written, "key: 2") && written.until >= 20'000 && !written.timeline.empty() &&
               written.timeline.front().at >= 2'000;
    };
    const auto shrunk = Shrinker(isOfInterest, 10'000).shrink(sample());
    EXPECT_EQ(shrunk.timeline.size(), 1U);
    EXPECT_EQ(shrunk.timeline.front().at, 2'000);
    EXPECT_GE(shrunk.until, 20'000);
    EXPECT_LT(shrunk.until, 60'000);
}

TEST(Shrinker, AsksNoMoreOftenThanItMay) {
    int asked = 0;
    const auto isOfInterest = [&asked](const WrittenClass&) { return ++asked > 0; };
    Shrinker(isOfInterest, 5).shrink(sample());
    EXPECT_EQ(asked, 5);
}

}  // namespace
}  // namespace vantrel::simulation
