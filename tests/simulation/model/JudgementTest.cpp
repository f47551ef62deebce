#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "tests/simulation/model/Judgement.h"

namespace vantrel::simulation {
namespace {

bool isBroken(const std::vector<BrokenRule>& broken, std::string_view rule, std::size_t line) {
    return std::any_of(broken.begin(), broken.end(),
                       [&](const BrokenRule& each) { return each.rule == rule && each.line == line; });
}

TEST(Judgement, ASecondEndOfOneLockdownIsSeen) {
    const std::string transcript =
        "    6.100  log          🔒 ATTIVAZIONE LOCKDOWN\n"
        "    9.100  log          [SESSION] Fine sessione: Sessione terminata dall'utente\n"
        "    9.200  log          [SESSION] Fine sessione: Sessione terminata dall'utente\n"
        "   10.000  end          the client is running\n";
    EXPECT_TRUE(isBroken(brokenRules("", transcript), "one end for each lockdown", 3));
}

TEST(Judgement, MisuseIsSeen) {
    const std::string transcript =
        "   10.000  end          the client is running\n"
        "    6.100  misuse       deadlock: a wait that nothing can end\n";
    EXPECT_TRUE(isBroken(brokenRules("", transcript), "the client misuses nothing", 2));
}

}  // namespace
}  // namespace vantrel::simulation
