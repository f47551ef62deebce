#include <gtest/gtest.h>

#include <string>

#include "tests/rehearsal/Reading.h"

namespace vantrel::rehearsal {
namespace {

/// Knows preludes/p, which lasts seven seconds and has a session ABC.
std::variant<FoundPrelude, NoPrelude> one(const std::string& name) {
    if (name != "preludes/p") return NoPrelude{"there is no " + name, "nowhere"};
    FoundPrelude found;
    found.scenario.mac.home = "/Users/altra";
    found.scenario.server.address = "https://altro.example";
    found.scenario.server.sessions.push_back({"ABC", "Titolo", practice::SessionStatus::active, ""});
    found.scenario.timeline = {{2, PressButton{"A"}}, {3, PressButton{"B"}}};
    found.scenario.until = 7;
    found.keptTranscript = "kept";
    return found;
}

const std::string start = "title: T\nbegins: preludes/p\n";
const std::string rest = "timeline: [{at: 7, press: C}]\nuntil: 8\n";

TEST(PreludeReading, TakesTheMacAndTheServerOfThePrelude) {
    const auto scenario = good(start + rest, one);
    EXPECT_EQ(scenario.mac.home, "/Users/altra");
    EXPECT_EQ(scenario.server.address, "https://altro.example");
    ASSERT_TRUE(scenario.prelude);
    EXPECT_EQ(scenario.prelude->name, "preludes/p");
    EXPECT_EQ(scenario.prelude->until, 7);
    EXPECT_EQ(scenario.prelude->keptTranscript, "kept");
    ASSERT_EQ(scenario.prelude->timeline.size(), 2U);
    EXPECT_EQ(std::get<PressButton>(scenario.prelude->timeline[1].action).title, "B");
    ASSERT_EQ(scenario.timeline.size(), 1U);
    EXPECT_EQ(std::get<PressButton>(scenario.timeline[0].action).title, "C");
    EXPECT_EQ(scenario.until, 8);
}

TEST(PreludeReading, KeepsForAfterwardsWhatTheScenarioAdds) {
    const auto scenario = good(start + rest + R"(mac:
  accessibility: refused
  microphone: undecided
  camera: restricted
  browsers: [edge, {name: chrome, ignores-quit: yes}]
  window-flags-lag: 0.2
  full-screen-takes: 2
  safari: no
  applications: [{name: X, bundle-identifier: com.x}]
server:
  latency: 1
  sessions: [{code: DUE}]
  version: {latest: 2.1-macOS}
  replies: [{to: GET /a, status: 500}]
)",
                               one);
    const auto& mac = scenario.prelude->mac;
    EXPECT_EQ(mac.accessibility, false);
    EXPECT_EQ(mac.microphone, AuthorizationStatus::notDetermined);
    EXPECT_EQ(mac.camera, AuthorizationStatus::restricted);
    ASSERT_EQ(mac.browsers->size(), 2U);
    EXPECT_EQ(mac.browsers->at(BrowserName::edge), InstalledBrowser());
    EXPECT_TRUE(mac.browsers->at(BrowserName::chrome).behaviour.ignoresTerminate);
    EXPECT_EQ(mac.safari, false);
    EXPECT_EQ(mac.flagDelay, 0.2);
    EXPECT_EQ(mac.fullScreenDuration, 2);
    ASSERT_EQ(mac.applications.size(), 1U);
    EXPECT_EQ(mac.applications[0].name, "X");
    const auto& server = scenario.prelude->server;
    EXPECT_EQ(server.latency, 1);
    ASSERT_EQ(server.sessions.size(), 1U);
    EXPECT_EQ(server.sessions[0].code, "DUE");
    ASSERT_TRUE(server.version);
    EXPECT_EQ(server.version->latest, "2.1-macOS");
    ASSERT_EQ(server.replies.size(), 1U);
    // What the prelude began with is unchanged.
    EXPECT_EQ(scenario.mac.accessibility, std::nullopt);
    EXPECT_EQ(scenario.mac.browsers, MacSetup().browsers);
    EXPECT_EQ(scenario.server.sessions.size(), 1U);
}

TEST(PreludeReading, LeavesAsItIsWhatTheScenarioDoesNotName) {
    const auto scenario = good(start + rest + "mac: {}\nserver: {}\n", one);
    EXPECT_EQ(scenario.prelude->mac.accessibility, std::nullopt);
    EXPECT_EQ(scenario.prelude->mac.browsers, std::nullopt);
    EXPECT_EQ(scenario.prelude->server.latency, std::nullopt);
    EXPECT_FALSE(scenario.prelude->server.version);
}

TEST(PreludeReading, ReadsThePreludeFirstWhereverItStands) {
    EXPECT_EQ(wrong("mac: {seed: 1}\n" + rest + "title: T\nbegins: preludes/p\n", one),
              "1: 'seed' is settled at the launch, by the prelude\n");
}

TEST(PreludeReading, RefusesWhatCannotChangeAfterTheLaunch) {
    EXPECT_EQ(
        wrong(start + rest + R"(mac:
  bundle-identifier: none
  seed: 1
  calendar: 2026-03-02T08:00:00Z
  home: /Users/x
  displays: []
  separate-spaces: no
  settings: {a: b}
  macos: 13
server:
  address: https://x.example
)",
              one),
        "6: 'bundle-identifier' is settled at the launch, by the prelude\n"
        "7: 'seed' is settled at the launch, by the prelude\n"
        "8: 'calendar' is settled at the launch, by the prelude\n"
        "9: 'home' is settled at the launch, by the prelude\n"
        "10: 'displays' is settled at the launch, by the prelude; a step can plug, unplug, arrange or mirror one\n"
        "11: 'separate-spaces' is settled at the launch, by the prelude\n"
        "12: 'settings' is settled at the launch, by the prelude\n"
        "13: 'macos' is settled at the launch, by the prelude\n"
        "15: 'address' is settled at the launch, by the prelude\n");
}

TEST(PreludeReading, RefusesASessionThatThePreludeHas) {
    EXPECT_EQ(wrong(start + rest + "server:\n  sessions:\n    - {code: DUE}\n    - {code: abc}\n", one),
              "8: there are two sessions ABC\n");
}

TEST(PreludeReading, RefusesWhatWouldComeBeforeItsEnd) {
    EXPECT_EQ(wrong(start + "timeline:\n  - {at: 6.5, press: C}\nuntil: 6.9\n", one),
              "4: a step comes before the end of the prelude, 7\n5: 'until' comes before the end of the prelude, 7\n");
    EXPECT_EQ(good(start + "timeline: []\nuntil: 7\n", one).until, 7);
}

TEST(PreludeReading, RefusesAPreludeThatThereIsNot) {
    EXPECT_EQ(wrong("title: T\nbegins: preludes/q\n" + rest, one), "2: there is no preludes/q\n2: nowhere\n");
}

TEST(PreludeReading, RefusesAPreludeWithASeedOfItsOwn) {
    const auto seeded = [](const std::string&) {
        FoundPrelude found;
        found.scenario.mac.seed = 3;
        return found;
    };
    EXPECT_EQ(wrong(start + rest, seeded), "2: preludes/p has a seed of its own\n");
}

TEST(PreludeReading, RefusesAnythingButANameInTheFolderOfPreludes) {
    for (const std::string name :
         {"p", "preludes", "preludes/", "preludes/../p", "preludes/p.yaml", "preludes/P", "/preludes/p", "''"}) {
        std::string text = "title: T\nbegins: ";
        text.append(name).append("\n").append(rest);
        EXPECT_EQ(wrong(text, one),
                  "2: 'begins' is not preludes/ and a name in lower case, such as preludes/lockdown\n")
            << name;
    }
    EXPECT_EQ(wrong("title: T\nbegins: [preludes/p]\n" + rest, one), "2: 'begins' is not a text\n");
    EXPECT_EQ(wrong("title: T\nbegins:\n" + rest, one), "2: 'begins' is not a text\n");
    EXPECT_EQ(wrong(start + start + rest, one),
              "3: 'title' stands twice in the file\n4: 'begins' stands twice in the file\n");
}

TEST(PreludeReading, FindsTheOtherProblemsOfAScenarioWithoutItsPrelude) {
    EXPECT_EQ(wrong("title: T\nbegins: preludes/q\nmac: {home: x, seeds: 1}\nuntil: 8\n", one),
              "1: the file lacks 'timeline'\n2: there is no preludes/q\n2: nowhere\n"
              "3: 'home' is settled at the launch, by the prelude\n3: unknown word 'seeds' in 'mac'\n");
}

}  // namespace
}  // namespace vantrel::rehearsal
