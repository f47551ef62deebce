#include <gtest/gtest.h>

#include <iostream>
#include <map>

#include "tests/simulation/model/Judgement.h"
#include "tests/simulation/model/KeptScenarios.h"
#include "tests/simulation/model/Mistakes.h"

namespace vantrel::simulation {
namespace {

TEST(Judgement, EveryKeptTranscriptHoldsTheRules) {
    const auto kept = keptScenarios();
    ASSERT_GT(kept.size(), 100U);
    for (const KeptScenario& each : kept) {
        for (const BrokenRule& broken : brokenRules(each.scenario, each.transcript)) {
            ADD_FAILURE() << each.name << ": line " << broken.line << ": " << broken.rule << ": " << broken.why;
        }
    }
}

TEST(Judgement, MistakesOnPurposeAreSeen) {
    constexpr int wanted = 2000;
    // A few less than are seen: each scenario that comes or goes has other mistakes drawn.
    constexpr int seenAtLeast = wanted * 98 / 100;
    const auto kept = keptScenarios();
    ASSERT_FALSE(kept.empty());
    std::mt19937 random(17);                            // always the same mistakes
    std::map<std::string, std::pair<int, int>> ofKind;  // made, seen
    int made = 0;
    int seen = 0;
    while (made < wanted) {
        const KeptScenario& each = kept[random() % kept.size()];
        const auto mistake = makeMistake(each.transcript, random);
        if (!mistake) continue;
        const bool isSeen = !brokenRules(each.scenario, mistake->transcript).empty();
        ++made;
        seen += isSeen ? 1 : 0;
        ++ofKind[mistake->kind].first;
        ofKind[mistake->kind].second += isSeen ? 1 : 0;
        if (!isSeen) std::cout << "not seen in " << each.name << ", " << mistake->kind << ": " << mistake->what;
    }
    for (const auto& [kind, counts] : ofKind) {
        std::cout << kind << ": " << counts.second << " of " << counts.first << " are seen\n";
    }
    std::cout << seen << " of " << made << " are seen\n";
    EXPECT_GE(seen, seenAtLeast);
}

}  // namespace
}  // namespace vantrel::simulation
