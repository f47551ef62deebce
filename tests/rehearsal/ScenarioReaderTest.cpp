#include <gtest/gtest.h>

#include <string>

#include "tests/rehearsal/Reading.h"

namespace vantrel::rehearsal {
namespace {

TEST(ScenarioReader, NamesTheLineOfAKeyWithoutAValue) {
    EXPECT_EQ(wrong("title:\n\n\nuntil:\ntimeline:\n"),
              "1: 'title' is not a text\n4: 'until' is not a number\n5: 'timeline' is not a list\n");
    EXPECT_EQ(wrong(head + "timeline:\n  - at: 1\n    press:\n  - at: 2\n    plug: {name: , frame: [0, 0, 1, 1]}\n"),
              "5: 'press' is not a text\n7: 'name' is not a text\n");
    EXPECT_EQ(wrong(head + "timeline: []\nmac:\nserver:\n  latency:\n"),
              "4: 'mac' is not a mapping\n6: 'latency' is not a number\n");
}

TEST(ScenarioReader, FillsInWhatIsNotSaid) {
    const auto scenario = good("title: T\ntimeline: []\nuntil: 5\n");
    EXPECT_EQ(scenario.title, "T");
    EXPECT_EQ(scenario.until, 5);
    EXPECT_TRUE(scenario.timeline.empty());
    EXPECT_EQ(scenario.mac.bundleIdentifier, "biz.quorrin.vantrel");
    EXPECT_EQ(scenario.mac.seed, 0U);
    EXPECT_EQ(scenario.mac.macOS, 14);
    EXPECT_EQ(scenario.mac.calendar, 1772438400);
    EXPECT_EQ(scenario.mac.displays, (std::vector<Screen>{{"Schermo integrato", {{0, 0}, {1440, 900}}}}));
    EXPECT_EQ(scenario.mac.browsers, InstalledBrowsers({{BrowserName::chrome, {}}}));
    EXPECT_EQ(scenario.mac.accessibility, std::nullopt);
    EXPECT_EQ(scenario.mac.microphone, std::nullopt);
    EXPECT_EQ(scenario.server.address, "https://server.vantrel.example");
    EXPECT_EQ(scenario.server.latency, std::nullopt);
    EXPECT_FALSE(scenario.prelude);
}

TEST(ScenarioReader, ReadsTheMac) {
    const auto mac = good(head + R"(timeline: []
mac:
  bundle-identifier: none
  seed: 12
  macos: 13
  calendar: 1970-01-01T00:01:00Z
  home: /Users/altra
  displays: [{name: A, frame: [0, 0, 800, 600]}, {name: B, frame: [-1280.5, 100, 1280.5, 720]}]
  separate-spaces: no
  accessibility: refused
  activation: ignored
  microphone: undecided
  camera: restricted
  settings: {vt_email: a@b}
  applications: [{name: X, bundle-identifier: com.x}]
)")
                         .mac;
    EXPECT_EQ(mac.bundleIdentifier, std::nullopt);
    EXPECT_EQ(mac.seed, 12U);
    EXPECT_EQ(mac.macOS, 13);
    EXPECT_EQ(mac.calendar, 60);
    EXPECT_EQ(mac.home, "/Users/altra");
    EXPECT_EQ(mac.displays, (std::vector<Screen>{{"A", {{0, 0}, {800, 600}}}, {"B", {{-1280.5, 100}, {1280.5, 720}}}}));
    EXPECT_FALSE(mac.separateSpaces);
    EXPECT_EQ(mac.accessibility, false);
    EXPECT_EQ(mac.activation, virtualmac::ActivationAnswer::ignores);
    EXPECT_EQ(mac.microphone, AuthorizationStatus::notDetermined);
    EXPECT_EQ(mac.camera, AuthorizationStatus::restricted);
    EXPECT_EQ(mac.settings, (std::map<std::string, std::string>{{"vt_email", "a@b"}}));
    ASSERT_EQ(mac.applications.size(), 1U);
    EXPECT_EQ(mac.applications[0].bundleIdentifier, "com.x");
}

TEST(ScenarioReader, ReadsTheServer) {
    const auto server = good(head + R"(timeline: []
server:
  address: http://127.0.0.1:80
  latency: 1
  sessions: [{code: ab-1, title: "", status: WAITING, meet-link: "https://m"}]
  version: {latest: 2.1-macOS, severity: required, release-notes: N, download-url: D, minimum: "3", minimum-message: M}
  replies:
    - {to: "* /api/*", times: 3, status: 302, body: B, location: /x, delay: 0.5, pieces: {count: 2, every: 3}}
    - {to: "GET /a?b=c", error: E}
    - {to: GET /a, body-base64: //79}
    - {to: GET /a, body-size: 5, stalls: yes}
    - {to: POST /a, drops: yes, never-comes: no}
)")
                            .server;
    EXPECT_EQ(server.address, "http://127.0.0.1:80");
    EXPECT_EQ(server.latency, 1);
    ASSERT_EQ(server.sessions.size(), 1U);
    EXPECT_EQ(server.sessions[0].code, "AB-1");
    EXPECT_EQ(server.sessions[0].title, "");
    EXPECT_EQ(server.sessions[0].status, practice::SessionStatus::waiting);
    EXPECT_EQ(server.sessions[0].meetLink, "https://m");
    ASSERT_TRUE(server.version);
    EXPECT_EQ(server.version->minimum, "3");
    EXPECT_EQ(server.version->severity, "required");
    ASSERT_EQ(server.replies.size(), 5U);
    const auto& first = server.replies[0];
    EXPECT_EQ(first.reply.method, "*");
    EXPECT_EQ(first.reply.path, "/api/*");
    EXPECT_EQ(first.reply.times, 3U);
    EXPECT_EQ(first.reply.status, 302);
    EXPECT_EQ(first.reply.body, "B");
    EXPECT_EQ(first.reply.location, "/x");
    EXPECT_EQ(first.reply.delaySeconds, 0.5);
    EXPECT_EQ(first.pieces, 2);
    EXPECT_EQ(first.pause, 3);
    EXPECT_EQ(first.ending, ExchangeRule::Ending::answer);
    EXPECT_EQ(server.replies[1].reply.path, "/a?b=c");
    EXPECT_EQ(server.replies[1].errorText, "E");
    EXPECT_EQ(server.replies[1].ending, ExchangeRule::Ending::transportError);
    EXPECT_EQ(server.replies[2].reply.body, "\xFF\xFE\xFD");
    EXPECT_EQ(server.replies[3].reply.bodySize, 5U);
    EXPECT_TRUE(server.replies[3].reply.stallAfterHeaders);
    EXPECT_TRUE(server.replies[4].reply.dropConnection);
    EXPECT_EQ(server.replies[4].ending, ExchangeRule::Ending::answer);
}

TEST(ScenarioReader, ReadsEveryAction) {
    using Pairs = std::vector<std::pair<std::string, std::string>>;
    EXPECT_EQ(as<TypeTexts>("type: {email: E, code: \" C\", server: '', name: N}").fields,
              (Pairs{{"emailField", "E"}, {"sessionCodeField", " C"}, {"serverUrlField", ""}, {"fullNameField", "N"}}));
    EXPECT_EQ(as<PressButton>("press: Nuova sessione").title, "Nuova sessione");
    EXPECT_EQ(as<AnswerAlert>("answer: Termina").button, "Termina");
    EXPECT_EQ(as<ChooseMenuItem>("choose: Termina sessione").title, "Termina sessione");
    EXPECT_FALSE(as<PressKey>("key: Return").command);
    EXPECT_EQ(as<PressKey>("key: Return").key, "\r");
    EXPECT_TRUE(as<PressKey>("key: Command-Q").command);
    EXPECT_EQ(as<PressKey>("key: Command-Q").key, "q");
    EXPECT_EQ(as<Deed>("do: open the status menu"), Deed::openStatusMenu);
    EXPECT_EQ(as<Deed>("do: open the application menu"), Deed::openApplicationMenu);
    EXPECT_EQ(as<Deed>("do: close the menu"), Deed::closeMenu);
    EXPECT_EQ(as<Deed>("do: close the window"), Deed::closeWindow);
    EXPECT_EQ(as<Deed>("do: log out"), Deed::logOut);
    EXPECT_TRUE(std::holds_alternative<ReplyAsUsual>(action("do: let the server reply as usual")));
    EXPECT_TRUE(as<AnswerPermissionPrompt>("permission: allow").allow);
    EXPECT_FALSE(as<AnswerPermissionPrompt>("permission: refuse").allow);
    EXPECT_EQ(as<LaunchApplication>("launch: {name: X, bundle-identifier: com.x}").application.name, "X");
    EXPECT_EQ(as<ExitApplication>("exit: X").name, "X");
    EXPECT_EQ(as<PlugDisplay>("plug: {name: X, frame: [1, 2, 3, 4]}").display, (Screen{"X", {{1, 2}, {3, 4}}}));
    EXPECT_EQ(as<UnplugDisplay>("unplug: X").name, "X");
    EXPECT_FALSE(as<SetAccessibility>("accessibility: refused").granted);
    EXPECT_EQ(as<SetCapture>("microphone: refused").status, AuthorizationStatus::denied);
    EXPECT_EQ(as<SetCapture>("microphone: refused").media, MediaType::audio);
    EXPECT_EQ(as<SetCapture>("camera: granted").media, MediaType::video);
    EXPECT_EQ(as<CloseLid>("close-lid: 600").seconds, 600);
    EXPECT_EQ(as<EndSession>("end-session: ABC").code, "ABC");
    EXPECT_EQ(as<ChangeReplies>("reply: {to: GET /x, not-http: yes}").rule.ending, ExchangeRule::Ending::notHTTP);
    EXPECT_EQ(as<FailSerialisations>("fail-json: 2").count, 2);
    EXPECT_EQ(as<RefuseAddresses>("refuse-addresses: /join").containing, "/join");
    EXPECT_FALSE(as<SetOpening>("opening: fails").works);
}

TEST(ScenarioReader, KeepsEqualTimesInTheWrittenOrder) {
    const auto scenario = good(head + "timeline:\n- {at: 1, press: A}\n- {at: 1, press: B}\n- {at: 1.5, press: C}\n");
    ASSERT_EQ(scenario.timeline.size(), 3U);
    EXPECT_EQ(std::get<PressButton>(scenario.timeline[1].action).title, "B");
    EXPECT_EQ(scenario.timeline[2].at, 1.5);
}

TEST(ScenarioReader, NamesEveryProblemWithItsLine) {
    EXPECT_EQ(wrong(R"(title: T
tilte: T
mac:
  microphone: maybe
  displays:
    - name: A
  settings: 7
server:
  latency: fast
  sessions:
    - title: X
timeline:
  - at: 3
    press: A
  - at: 2
    press: A
  - at: 4
    pres: A
  - press: A
  - at: 5
  - at: 6
    press: A
    answer: B
until: 1
)"),
              "2: unknown word 'tilte' in the file\n"
              "4: 'microphone' is not one of: undecided, restricted, refused, granted\n"
              "6: a display lacks 'frame'\n"
              "7: 'settings' is not a mapping\n"
              "9: 'latency' is not a number\n"
              "11: a session lacks 'code'\n"
              "15: time goes back\n"
              "18: unknown word 'pres' in a step\n"
              "19: a step lacks 'at'\n"
              "20: a step lacks what happens\n"
              "23: a step has a second action, 'answer'\n"
              "24: 'until' comes before the last step\n");
}

TEST(ScenarioReader, NamesWhatIsMissing) {
    EXPECT_EQ(wrong("mac: {}\n"),
              "1: the file lacks 'title'\n1: the file lacks 'timeline'\n1: the file lacks 'until'\n");
    EXPECT_EQ(wrong("\n\ntitle: ''\nuntil: 1\ntimeline: []\n"), "3: 'title' is empty\n");
}

TEST(ScenarioReader, RefusesAnEmptyFile) {
    for (const char* text : {"", "\n\n", "# nothing\n", "---\n", "~\n"})
        EXPECT_EQ(wrong(text), "1: the file is empty\n");
}

TEST(ScenarioReader, RefusesAFileThatIsNoMapping) {
    EXPECT_EQ(wrong("just a text\n"), "1: the file is not a mapping\n");
    EXPECT_EQ(wrong("- a\n- b\n"), "1: the file is not a mapping\n");
}

TEST(ScenarioReader, RefusesWordsThatStandTwice) {
    EXPECT_EQ(wrong("title: T\nuntil: 1\ntimeline: []\ntitle: U\n"), "4: 'title' stands twice in the file\n");
    EXPECT_EQ(wrong(head + "timeline:\n- at: 1\n  at: 2\n  press: A\n"), "5: 'at' stands twice in a step\n");
}

TEST(ScenarioReader, RefusesASecondDocument) {
    EXPECT_EQ(wrong("title: T\nuntil: 1\ntimeline: []\n---\nmore: 1\n"),
              "5: a second document begins here; a scenario is one\n");
}

TEST(ScenarioReader, NamesTheLineOfASyntaxError) {
    EXPECT_EQ(wrong("title: T\nuntil: [1\n").substr(0, 22), "3: this is not YAML: e");
    EXPECT_EQ(wrong("title: T\n\tuntil: 1\n").substr(0, 20), "2: this is not YAML:");
    EXPECT_EQ(wrong("title: *unknown\n").substr(0, 20), "1: this is not YAML:");
}

TEST(ScenarioReader, RefusesBytesThatAreNoText) {
    EXPECT_EQ(wrong("title: T\nuntil: \xFF\n"), "2: this is not UTF-8\n");
    EXPECT_EQ(wrong(std::string("title: T\nuntil: \0", 17)), "2: there is a NUL character\n");
}

TEST(ScenarioReader, RefusesDeepNestingWithoutFalling) {
    EXPECT_NE(wrong(std::string(100'000, '[')), "nothing");
    EXPECT_NE(wrong(std::string(100'000, '{')), "nothing");
    EXPECT_NE(wrong("title: &a [*a]\n"), "nothing");
}

TEST(ScenarioReader, RefusesNumbersThatAreNone) {
    for (const char* number : {"soon", "-1", ".nan", ".inf", "1e400", "1 s", "''", "[1]", "0x10", "31536001"}) {
        const auto text = "title: T\nuntil: " + std::string(number) + "\ntimeline: []\n";
        EXPECT_EQ(wrong(text).substr(0, 11), "2: 'until' ") << number;
    }
}

TEST(ScenarioReader, RefusesValuesThatMakeNoSense) {
    const auto step = [](const std::string& text) { return wrong(head + "timeline:\n  - at: 1\n    " + text + "\n"); };
    EXPECT_EQ(step("key: Command-q"),
              "5: 'key' is not Return, Command- with a capital letter, or a key such as cmd+shift+4\n");
    EXPECT_EQ(step("key: Command-Tab"),
              "5: 'key' is not Return, Command- with a capital letter, or a key such as cmd+shift+4\n");
    EXPECT_EQ(
        step("do: something"),
        "5: 'do' is not one of: open the status menu, open the application menu, close the menu, close the window, "
        "log out, let the server reply as usual, let elements work as usual\n");
    EXPECT_EQ(step("type: {codice: X}"), "5: unknown field 'codice' (server, code, name or email)\n");
    EXPECT_EQ(step("type: X"), "5: 'type' is not a mapping\n");
    EXPECT_EQ(step("press: ''"), "5: 'press' is empty\n");
    EXPECT_EQ(step("press: [A]"), "5: 'press' is not a text\n");
    EXPECT_EQ(step("fail-json: 0"), "5: 'fail-json' is not a whole number from 1 to 1000000\n");
    EXPECT_EQ(step("reply: {status: 500}"), "5: a reply rule lacks 'to'\n");
    EXPECT_EQ(step("reply: {to: PUT /x}"),
              "5: 'to' is not a method (GET, POST or *) and a path, such as: GET /api/sessions/*\n");
    EXPECT_EQ(step("reply: {to: GET /x, drops: yes, error: E}"),
              "5: a reply rule has more than one of: stalls, drops, never-comes, not-http, error\n");
    EXPECT_EQ(step("reply: {to: GET /x, body-base64: '*'}"), "5: 'body-base64' is not base64 with its padding\n");
    EXPECT_EQ(step("reply: {to: GET /x, status: 1000}"), "5: 'status' is not a whole number from 200 to 999\n");
    EXPECT_EQ(step("reply: {to: GET /x, status: 99}"), "5: 'status' is not a whole number from 200 to 999\n");
    EXPECT_EQ(step("plug: {name: X, frame: [0, 0, 0, 5]}"), "5: the width is less than 1\n");
    EXPECT_EQ(step("plug: {name: X, frame: [0, 0]}"), "5: 'frame' is not [x, y, width, height]\n");
}

TEST(ScenarioReader, RefusesTwoThingsOfOneName) {
    EXPECT_EQ(wrong(head + "timeline: []\nserver: {sessions: [{code: a}, {code: A}]}\n"),
              "4: there are two sessions A\n");
    EXPECT_EQ(wrong(head + "timeline: []\nmac:\n  displays:\n    - {name: A, frame: [0, 0, 1, 1]}\n"
                           "    - {name: A, frame: [1, 0, 1, 1]}\n"),
              "7: there are two displays 'A'\n");
}

TEST(ScenarioReader, RefusesDisplaysThatASystemWouldNotArrangeSo) {
    EXPECT_EQ(wrong(head + "timeline: []\nmac:\n  displays:\n    - {name: A, frame: [0, 10, 1, 1]}\n"),
              "6: the first display is not at 0 0\n");
    EXPECT_EQ(wrong(head + "timeline: []\nmac:\n  displays:\n    - {name: A, frame: [0, 0, 1, 1]}\n"
                           "    - {name: B, frame: [0, 0, 2, 2]}\n"),
              "7: there are two displays at one place\n");
}

TEST(ScenarioReader, RefusesAnAddressWithAPath) {
    for (const char* address :
         {"server.example", "https://", "https://a/", "https://a/b", "ftp://a", "https://a b", "https://u@a",
          "https://a?b", "https://a#b", "https://:80", "https://a:", "https://a:b", "https://[a", "https://%zz"}) {
        EXPECT_EQ(wrong(head + "timeline: []\nserver: {address: '" + address + "'}\n"),
                  "4: 'address' is not of the form https://HOST or http://HOST:PORT\n");
    }
}

}  // namespace
}  // namespace vantrel::rehearsal
