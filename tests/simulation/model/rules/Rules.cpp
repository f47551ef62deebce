#include "tests/simulation/model/rules/Rules.h"

#include "tests/simulation/model/rules/Answers.h"
#include "tests/simulation/model/rules/Covers.h"
#include "tests/simulation/model/rules/Endings.h"
#include "tests/simulation/model/rules/Heartbeats.h"
#include "tests/simulation/model/rules/Order.h"
#include "tests/simulation/model/rules/OwnTexts.h"
#include "tests/simulation/model/rules/Steps.h"
#include "tests/simulation/model/rules/Succession.h"

namespace vantrel::simulation {
namespace {

constexpr Rule rules[] = {
    {"every line can be read", everyLineCanBeRead},
    {"time never goes back", timeNeverGoesBack},
    {"the client misuses nothing", noMisuse},
    {"a run has one end, after which nothing happens", oneEndOfTheRun},
    {"every text is one of the product's own", everyTextIsTheProducts},
    {"each step is followed by the next", eachStepIsFollowed},
    {"the steps of an end come in their order", theEndHasItsOrder},
    {"a lockdown has one status item", oneStatusItem},
    {"swallowed keys are those that the log names", swallowedKeysAreNamed},
    {"processes and windows that are named are there", whatIsNamedIsThere},
    {"a key that is told of was pressed", keysWerePressed},
    {"an answer is a button of an alert that is open", answersAnswerAlerts},
    {"a menu opens when somebody opens it", menusAreOpenedBySomebody},
    {"a cover is shown once, and once closed", coversWereShown},
    {"heartbeats have their form", heartbeatsHaveTheirForm},
    {"one end for each lockdown", oneEndForEachLockdown},
    {"one notice for each end, and no heartbeat after it", oneNoticeForEachEnd},
    {"no tap without a lockdown", noTapWithoutLockdown},
    {"no meeting stands open without a lockdown or an end", noMeetingWithoutLockdown},
    {"the end holds the main thread no longer than it may", theEndIsShort},
    {"after an end nothing of the lockdown is left", nothingIsLeft},
};

}  // namespace

std::span<const Rule> everyRule() {
    return rules;
}

}  // namespace vantrel::simulation
