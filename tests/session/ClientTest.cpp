#include "tests/session/ClientTest.h"

#include "app/ApplicationMain.h"
#include "session/EndScreen.h"
#include "session/JoinScreen.h"

namespace vantrel {

using virtualmac::NetworkAnswer;

virtualmac::Options ClientTest::returningParticipant() {
    auto options = virtualmac::optionsFromEnvironment();
    options.bundleIdentifier = "biz.quorrin.vantrel";
    options.settings = {{"vt_serverURL", server}, {"vt_fullName", "Ada Neri"}, {"vt_email", "ada@example.com"}};
    return options;
}

ClientTest::ClientTest(virtualmac::Options options) : MacTest(std::move(options)) {
    const std::string session = std::string(server) + "/api/sessions/NQRP5D";
    answers_ = {
        {"GET " + session, NetworkAnswer::reply(200, R"({"status":"ACTIVE"})")},
        {"POST " + session + "/join",
         NetworkAnswer::reply(200,
                              R"({"meetLink":"https://meet.example/abc","userToken":"T","sessionTitle":"Titolo"})")},
        {"POST " + std::string(server) + "/api/heartbeat", NetworkAnswer::reply(200, R"({"sessionEnded":false})")},
        {"GET " + std::string(server) + "/api/version/latest",
         NetworkAnswer::reply(200, R"({"updateAvailable":false})")},
    };
    mac().processes().install(virtualmac::chromePath, virtualmac::chrome());
    mac().network().setHandler([this](const URLRequest& request) {
        const auto asked = request.method + " " + request.url.absoluteString;
        const NetworkAnswer* best = nullptr;
        for (const auto& [prefix, answer] : answers_) {
            if (asked.starts_with(prefix)) best = &answer;
        }
        return best != nullptr ? *best : NetworkAnswer::failure("Impossibile connettersi al server.");
    });
}

void ClientTest::answer(const std::string& request, NetworkAnswer answer) {
    answers_[request] = std::move(answer);
}

void ClientTest::launch() {
    mac().launch([](Computer& computer) { applicationMain(computer); });
    mac().runFor(2);
}

void ClientTest::join(const std::string& code) {
    participant().type(std::string(JoinScreen::sessionCodeField), code);
    participant().press(std::string(JoinScreen::joinButton));
    mac().runFor(0);
}

void ClientTest::enterLockdown() {
    join();
    mac().runFor(30);
    EXPECT_EQ(screen(), "none");
}

void ClientTest::askToEnd() {
    participant().openStatusMenu();
    mac().runFor(1);
    participant().chooseMenuItem("Termina sessione");
    mac().runFor(1);
    EXPECT_EQ(alerts(), std::vector<std::string>{"Terminare la sessione?"});
}

std::string ClientTest::text(std::string_view controlId) {
    const auto windows = mac().windows().all();
    return windows.empty() ? "" : windows.front().text(controlId);
}

bool ClientTest::isEnabled(std::string_view controlId) {
    const auto windows = mac().windows().all();
    return !windows.empty() && windows.front().isEnabled(controlId);
}

std::string ClientTest::screen() {
    const auto window = mac().windows().front();
    if (!window) return "none";
    std::string shown;
    for (const auto& view : window->views) {
        if (!view.hidden) shown += view.id;
    }
    return shown;
}

bool ClientTest::isClosable() {
    const auto windows = mac().windows().all();
    return !windows.empty() && (windows.front().styleMask & windowClosable) != 0;
}

std::vector<std::string> ClientTest::alerts() {
    std::vector<std::string> texts;
    for (const auto& alert : mac().alerts().up()) texts.push_back(alert.messageText);
    return texts;
}

std::vector<std::string> ClientTest::requests() {
    std::vector<std::string> made;
    for (const auto& sent : mac().network().sent()) {
        made.push_back(sent.request.method + " " + sent.request.url.absoluteString);
    }
    return made;
}

std::vector<std::string> ClientTest::bodies(std::string_view path) {
    std::vector<std::string> found;
    for (const auto& sent : mac().network().sent()) {
        if (sent.request.url.absoluteString.ends_with(path)) found.push_back(sent.request.body.value_or("no body"));
    }
    return found;
}

double ClientTest::timeOfAReadThatHangs() {
    mac().processes().install(virtualmac::edgePath, virtualmac::edge());
    const auto process = mac().processes().start(virtualmac::edgePath);
    mac().runFor(1);
    mac().accessibility().setUnresponsive(process, true);
    double waited = 0;
    mac().inBackground([&] {
        const double began = computer().clock.uptime();
        computer().accessibility.application(process)->attribute("AXWindows");
        waited = computer().clock.uptime() - began;
    });
    mac().runFor(accessibilityTimeout + 1);
    return waited;
}

void ClientTest::expectNothingLeft() {
    mac().runUntilIdle();
    const auto left = mac().leftovers();
    EXPECT_EQ(left.timers, 0u);
    EXPECT_EQ(left.observers, 0u);
    EXPECT_EQ(left.statusItems, 0u);
    EXPECT_EQ(left.overlays, 0u);
    EXPECT_EQ(left.keyboardTaps, 0u);
    EXPECT_EQ(left.alerts, 0u);
    EXPECT_EQ(left.pendingBlocks, 0u);
    EXPECT_EQ(left.workers, 0u);
    EXPECT_EQ(left.requests, 0u);
    EXPECT_EQ(left.prompts, 0u);
    EXPECT_EQ(left.windows, 1u);
}

}  // namespace vantrel
