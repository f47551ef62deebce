#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>
#include <mutex>
#include <sstream>
#include <string>
#include <vector>

#include "platform/Computer.h"
#include "platform/threads/Lock.h"
#include "rehearsal/playing/Player.h"

namespace vantrel::rehearsal {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

struct Heard {
    PlayResult result;
    std::string transcript;
};

Heard run(const Scenario& scenario, const PlayOptions& options = {}) {
    std::ostringstream stream;
    const auto result = play(scenario, stream, options);
    return {result, stream.str()};
}

Scenario alone(std::vector<Step> timeline, double until) {
    Scenario scenario;
    scenario.title = "T";
    scenario.timeline = std::move(timeline);
    scenario.until = until;
    return scenario;
}

/// Begins with the other scenario and its kept transcript.
Scenario after(const Scenario& prelude, std::vector<Step> timeline, double until) {
    auto scenario = alone(std::move(timeline), until);
    scenario.mac = prelude.mac;
    scenario.server = prelude.server;
    auto& begins = scenario.prelude.emplace();
    begins.name = "preludes/p";
    begins.timeline = prelude.timeline;
    begins.until = prelude.until;
    begins.keptTranscript = run(prelude).transcript;
    return scenario;
}

/// Ends when the join button has been pressed.
Scenario joining() {
    auto scenario = alone({{2, TypeTexts{{{"sessionCodeField", "ABC"}, {"fullNameField", "N"}, {"emailField", "e@x"}}}},
                           {3, PressButton{"Avvia sessione protetta"}}},
                          3);
    scenario.server.sessions.push_back({"ABC", "Titolo", practice::SessionStatus::active, ""});
    return scenario;
}

TEST(Prelude, IsOneLineOfTheTranscript) {
    const auto heard = run(after(alone({{2, PressButton{"X"}}}, 4), {{5, PressKey{true, "q"}}}, 6));
    EXPECT_TRUE(heard.result.clean);
    EXPECT_EQ(heard.result.preludeDifference, "");
    EXPECT_EQ(heard.transcript,
              "    4.000  prelude      preludes/p\n"
              "    5.000  participant  presses Command-Q\n"
              "    5.000  client       is asked to quit\n"
              "    5.000  client       quits\n"
              "    6.000  end          the client has quit\n"
              "                        | left: nothing\n");
}

TEST(Prelude, LeavesTheRestAsItWouldBeInOneScenario) {
    auto whole = joining();
    const auto scenario = after(whole, {{10, Deed::openStatusMenu}}, 12);
    whole.timeline.push_back({10, Deed::openStatusMenu});
    whole.until = 12;
    const auto transcript = run(scenario, {.whole = true}).transcript;
    const std::string line = "    3.000  prelude      preludes/p\n";
    const auto place = transcript.find(line);
    ASSERT_NE(place, std::string::npos);
    EXPECT_EQ(transcript.substr(0, place) + transcript.substr(place + line.size()), run(whole).transcript);
}

TEST(Prelude, IsHeldAgainstItsKeptTranscriptToTheByte) {
    auto scenario = after(joining(), {}, 4);
    auto& kept = *scenario.prelude->keptTranscript;
    const auto place = kept.find("\"ABC\"");
    kept.replace(place, 5, "\"ABD\"");
    const auto heard = run(scenario);
    EXPECT_TRUE(heard.result.clean);
    EXPECT_EQ(heard.result.preludeDifference,
              "line 13\n  kept:       2.000  participant  types into sessionCodeField: \"ABD\"\n"
              "  played:     2.000  participant  types into sessionCodeField: \"ABC\"");
    // It continues anyway.
    EXPECT_THAT(heard.transcript, HasSubstr("    4.000  end "));
}

TEST(Prelude, IsHeldToWhatItLeavesToo) {
    auto scenario = after(joining(), {}, 4);
    auto& kept = *scenario.prelude->keptTranscript;
    kept.replace(kept.find("requests 1"), 10, "requests 2");
    EXPECT_THAT(run(scenario).result.preludeDifference, HasSubstr("requests 1"));
    kept += "\n";
    kept.replace(kept.find("requests 2"), 10, "requests 1");
    EXPECT_THAT(run(scenario).result.preludeDifference, HasSubstr("played: (nothing more)"));
}

TEST(Prelude, IsHeldAgainstNothingWhereNothingIsKept) {
    auto scenario = after(joining(), {}, 4);
    scenario.prelude->keptTranscript.reset();
    scenario.mac.seed = 5;
    EXPECT_EQ(run(scenario).result.preludeDifference, "");
}

TEST(Prelude, MayEndWithAClientThatHasQuit) {
    const auto heard = run(after(alone({{2, PressKey{true, "q"}}}, 3), {{4, PressButton{"X"}}}, 5));
    EXPECT_EQ(heard.transcript,
              "    3.000  prelude      preludes/p\n"
              "    4.000  ignored      a step: the client has quit\n"
              "    5.000  end          the client has quit\n"
              "                        | left: nothing\n");
}

TEST(Prelude, IsOverBeforeTheServerChanges) {
    auto scenario = after(joining(), {}, 6);
    scenario.prelude->server.latency = 1;
    ExchangeRule rule;
    rule.reply.path = "*";
    rule.reply.status = 503;
    scenario.prelude->server.replies = {rule};
    // The probe was sent in the prelude and gets that time's answer. The join is sent afterwards.
    EXPECT_THAT(run(scenario).transcript,
                StartsWith("    3.000  prelude      preludes/p\n"
                           "    3.050  reply        200 from https://server.vantrel.example/api/sessions/ABC\n"));
    EXPECT_THAT(run(scenario).transcript,
                HasSubstr("    4.050  reply        503 from https://server.vantrel.example/api/sessions/ABC/join\n"));
}

TEST(Prelude, IsOverBeforeTheMacChanges) {
    auto scenario = after(joining(), {}, 6);
    auto& mac = scenario.prelude->mac;
    mac.microphone = AuthorizationStatus::notDetermined;
    mac.camera = AuthorizationStatus::denied;
    mac.applications.push_back({"Note", "com.apple.Notes"});
    const auto heard = run(scenario);
    EXPECT_EQ(heard.result.preludeDifference, "");
    EXPECT_THAT(heard.transcript, StartsWith("    3.000  prelude      preludes/p\n"
                                             "    3.000  application  Note (501) starts\n"));
    EXPECT_THAT(heard.transcript, HasSubstr("    3.100  permission   the system asks for microphone\n"));
    EXPECT_THAT(heard.transcript, HasSubstr("    3.100  log          [TCC] Camera: stato già definito (2)\n"));
}

TEST(Prelude, IsOverBeforeThePermissionIsTakenAway) {
    auto scenario = after(joining(), {}, 6);
    scenario.prelude->mac.accessibility = false;
    EXPECT_THAT(run(scenario).transcript,
                HasSubstr("    3.100  alert        critical: Permesso Accessibilità richiesto\n"));
}

TEST(Prelude, IsOverBeforeOtherBrowsersAreInstalled) {
    auto scenario = after(joining(), {}, 6);
    scenario.prelude->mac.browsers.emplace()[BrowserName::edge];
    const auto heard = run(scenario);
    EXPECT_THAT(heard.transcript, HasSubstr("[BROWSER] Browser selezionato: Microsoft Edge\n"));
    scenario.prelude->mac.browsers.emplace();
    EXPECT_THAT(run(scenario).transcript, HasSubstr("[BROWSER] Browser selezionato: Safari\n"));
}

TEST(Prelude, IsOverBeforeSafariIsDeletedOrThereAgain) {
    auto scenario = after(joining(), {}, 6);
    scenario.prelude->mac.browsers.emplace();
    scenario.prelude->mac.safari = false;
    EXPECT_THAT(run(scenario).transcript,
                HasSubstr("[BROWSER] ❌ Errore: L’applicazione “Safari” non può essere aperta.\n"));
    scenario.mac.safari = false;
    scenario.prelude->mac.safari = true;
    EXPECT_THAT(run(scenario).transcript, HasSubstr("[BROWSER] Safari PID: 501\n"));
}

TEST(Prelude, IsOverBeforeSafariAnswersAsUsual) {
    auto scenario = after(joining(), {}, 9);
    scenario.mac.browsers = InstalledBrowsers();
    (*scenario.mac.browsers)[BrowserName::safari].answerDelay = 5;
    EXPECT_THAT(run(scenario).transcript, HasSubstr("    8.100  log          [BROWSER] Safari PID: 501\n"));
    scenario.prelude->mac.browsers.emplace()[BrowserName::safari];
    EXPECT_THAT(run(scenario).transcript, HasSubstr("    3.600  log          [BROWSER] Safari PID: 501\n"));
}

TEST(Prelude, LeavesABrowserThatRunsToBehaveOtherwise) {
    auto browsing = joining();
    browsing.until = 5;
    using What = DoToApplication::What;
    auto scenario = after(browsing, {{6, DesktopAction(DoToApplication{What::quit, "Google Chrome"})}}, 7);
    EXPECT_THAT(run(scenario).transcript, HasSubstr("Google Chrome (501) exits\n"));
    scenario.prelude->mac.browsers.emplace()[BrowserName::chrome].behaviour.ignoresTerminate = true;
    const auto heard = run(scenario);
    EXPECT_THAT(heard.transcript, HasSubstr("quits Google Chrome\n                        | ignored: it goes on\n"));
    EXPECT_THAT(heard.transcript, Not(HasSubstr("exits")));
}

/// Aborts in the middle of a prelude, in a process of its own.
void misuseInAPrelude() {
    const auto program = [](const Computer& computer) {
        computer.log.print("Prima");
        Lock lock;
        const std::scoped_lock guard(lock);
        for (;;) computer.threads.sleep(0.1);
    };
    auto scenario = alone({}, 3);
    scenario.prelude.emplace().until = 2;
    play(scenario, std::cerr, {program});
}

TEST(PreludeDeathTest, IsWrittenWhenTheRunIsBrokenOffInIt) {
    EXPECT_EXIT(misuseInAPrelude(), testing::ExitedWithCode(1),
                "    0.000  log          Prima\n"
                "    0.000  misuse       a wait with a lock held\n");
}

}  // namespace
}  // namespace vantrel::rehearsal
