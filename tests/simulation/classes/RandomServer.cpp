#include "tests/simulation/classes/RandomServer.h"

#include <array>
#include <string>

#include "tests/simulation/classes/RandomReplies.h"

namespace vantrel::simulation {

void RandomServer::draw(WrittenClass& written, Plan& plan) {
    constexpr std::array<Milliseconds, 8> latencies = {50, 50, 50, 0, 10, 250, 1'500, 4'000};
    plan.latency = numbers_.pick(latencies);
    if (plan.latency != 50) written.server.push_back("latency: " + secondsText(plan.latency));
    drawSessions(written, plan);
    drawVersion(written, plan);
    drawReplies(written);
}

void RandomServer::drawSessions(WrittenClass& written, Plan& plan) {
    constexpr std::array titles = {", title: Sicurezza sul lavoro", ", title: \"\"", "",
                                   ", title: \"Primo soccorso – è obbligatorio\""};
    constexpr std::array links = {"",
                                  "",
                                  "",
                                  ", meet-link: abc-defg-hij",
                                  ", meet-link: \"https://meet.example/a?b=c\"",
                                  ", meet-link: \" meet.example/x\"",
                                  ", meet-link: \"http://meet.example/è\""};
    for (const std::string code : {"AAA111", "BBB222"}) {
        const std::string status = numbers_.chance(8) ? ", status: WAITING" : "";
        const std::string title = numbers_.pick(titles);
        written.sessions.push_back("{code: " + code + title + numbers_.pick(links) + status + "}");
        plan.codes.push_back(code);
    }
    written.sessions.emplace_back("{code: CHIUSA, status: ENDED}");
}

void RandomServer::drawVersion(WrittenClass& written, Plan& plan) {
    constexpr std::array severities = {"recommended", "recommended", "required", "info", "critical"};
    constexpr std::array pages = {", download-url: \"https://download.example/vantrel\"", "",
                                  ", download-url: \"nessun indirizzo\""};
    if (numbers_.chance(14)) {
        plan.updateIsOffered = true;
        const std::string notes = numbers_.chance(40) ? R"(, release-notes: "Più veloce.\nCorrezioni.")" : "";
        const std::string severity = numbers_.pick(severities);
        written.server.push_back("version: {latest: 2.1-macOS, severity: " + severity + notes + numbers_.pick(pages) +
                                 "}");
    } else if (numbers_.chance(4)) {
        written.server.push_back("version: {minimum: 3.0-macOS, minimum-message: Versione superata." +
                                 std::string(numbers_.pick(pages)) + "}");
    }
}

void RandomServer::drawReplies(WrittenClass& written) {
    RandomReplies replies(numbers_);
    if (numbers_.chance(15)) written.replies.push_back(replies.toVersionCheck());
    if (numbers_.chance(15)) written.replies.push_back(replies.toJoin());
    for (auto count = numbers_.chance(25) ? numbers_.from(1, 3) : 0; count > 0; --count) {
        written.replies.push_back(replies.toHeartbeat());
    }
}

}  // namespace vantrel::simulation
