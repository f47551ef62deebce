#include <gtest/gtest.h>

#include "tests/simulation/program/Situations.h"

namespace vantrel::simulation {
namespace {

TEST(Situations, AreReadFromTheTranscriptAndTheRules) {
    const auto counts =
        situations("server:\n  replies:\n    - {to: POST /api/heartbeat, times: 2, status: 500, delay: 3}\n",
                   "    8.000  alert        warning: Terminare la sessione?\n"
                   "                        | altro\n"
                   "    8.100  alert        nobody sees: Terminare la sessione?\n"
                   "   11.000  log          ✅✅✅ LOCKDOWN COMPLETO E ATTIVO ✅✅✅\n"
                   "   12.000  displays     are now\n"
                   "                        | Uno 0 0 1440 900\n"
                   "   13.000  displays     are now\n"
                   "                        | Uno 0 0 1440 900\n"
                   "                        | Due 1440 0 1440 900\n"
                   "   13.500  fault        reads of AXFullScreen give -25200, times: 2\n"
                   "   13.600  participant  moves the window of Note to 10 20\n"
                   "   13.700  reply        error from https://server.vantrel.example/api/heartbeat\n"
                   "   14.000  log          [HEARTBEAT] Sessione terminata dal backend\n"
                   "   14.000  log          [SESSION] Fine sessione: Sessione terminata dall'utente\n"
                   "100000.000  lid          is closed for 5 s\n"
                   "100001.000  end          the client waits for an answer to: Uno\n");
    const Counts expected = {{"alerts: Terminare la sessione?", {1, 0, 1}},
                             {"alerts: (nobody sees)", {1, 0, 1}},
                             {"lockdowns: complete", {1, 0, 1}},
                             {"displays: changed for the first time", {1, 1, 1}},
                             {"displays: one more", {1, 1, 1}},
                             {"faults: reads of AXFullScreen fail", {1, 1, 1}},
                             {"participant: moves the window", {1, 1, 1}},
                             {"replies: error", {1, 1, 1}},
                             {"ends: by the server", {1, 1, 1}},
                             {"Mac: the lid is closed", {1, 0, 1}},
                             {"left: the client waits for an answer to", {1, 0, 1}},
                             {"reply rules: status", {1, 0, 1}},
                             {"reply rules: delay", {1, 0, 1}},
                             {"classes: with a lockdown", {1, 0, 1}},
                             {"classes: all", {1, 0, 1}}};
    for (const auto& [situation, count] : expected) {
        EXPECT_TRUE(counts.contains(situation) && counts.at(situation) == count) << situation;
    }
    EXPECT_EQ(counts.size(), expected.size()) << table(counts);
}

}  // namespace
}  // namespace vantrel::simulation
