#include "tests/simulation/model/Judgement.h"

#include "tests/simulation/model/Verdict.h"
#include "tests/simulation/model/acts/FollowedClient.h"
#include "tests/simulation/model/reading/Transcript.h"
#include "tests/simulation/model/rules/Rules.h"

namespace vantrel::simulation {

std::vector<BrokenRule> brokenRules(const std::string& scenario, const std::string& transcript) {
    const Transcript read(transcript);
    Verdict verdict;
    followClient(read, Scenario::read(scenario), verdict);
    for (const Rule& rule : everyRule()) {
        verdict.turnTo(rule.name);
        rule.judge(read, verdict);
    }
    return verdict.take();
}

}  // namespace vantrel::simulation
