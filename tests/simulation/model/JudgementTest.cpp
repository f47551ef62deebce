#include <gtest/gtest.h>

#include "tests/simulation/model/Judgement.h"

namespace vantrel::simulation {
namespace {

TEST(Judgement, ASecondEndOfOneLockdownIsSeen) {
    const std::string transcript =
        "    6.100  log          🔒 ATTIVAZIONE LOCKDOWN\n"
        "    9.100  log          [SESSION] Fine sessione: Sessione terminata dall'utente\n"
        "    9.200  log          [SESSION] Fine sessione: Sessione terminata dall'utente\n";
    const auto broken = brokenRules("title: x\ntimeline: []\nuntil: 10\n", transcript);
    ASSERT_EQ(broken.size(), 1U);
    EXPECT_EQ(broken[0].rule, "one end for each lockdown");
    EXPECT_EQ(broken[0].line, 3U);
}

TEST(Judgement, MisuseIsSeen) {
    const auto broken = brokenRules("", "    6.100  misuse       deadlock: a wait that nothing can end\n");
    ASSERT_EQ(broken.size(), 1U);
    EXPECT_EQ(broken[0].rule, "the client misuses nothing");
}

}  // namespace
}  // namespace vantrel::simulation
