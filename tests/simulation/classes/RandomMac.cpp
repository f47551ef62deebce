#include "tests/simulation/classes/RandomMac.h"

#include <array>

namespace vantrel::simulation {

void RandomMac::draw(WrittenClass& written, Plan& plan) {
    drawSystem(written);
    drawDisplays(written, plan);
    drawPermissions(written, plan);
    drawSettings(written, plan);
    drawFront(written);
}

void RandomMac::drawSystem(WrittenClass& written) {
    constexpr std::array systems = {13, 13, 14, 14, 14, 15, 15, 26, 26, 14};
    constexpr std::array calendars = {"2026-03-29T00:59:50Z", "2024-02-29T23:59:30Z", "2026-12-31T23:59:00Z",
                                      "2038-01-19T03:13:30Z", "2026-10-25T00:58:00Z", "1999-12-31T23:59:40Z"};
    written.mac.push_back("macos: " + std::to_string(numbers_.pick(systems)));
    if (numbers_.chance(50)) written.mac.push_back("seed: " + std::to_string(numbers_.from(1, 1'000'000)));
    if (numbers_.chance(25)) written.mac.push_back("calendar: " + std::string(numbers_.pick(calendars)));
    if (numbers_.chance(3)) written.mac.push_back("bundle-identifier: none");
}

void RandomMac::drawDisplays(WrittenClass& written, Plan& plan) {
    constexpr std::array<int, 5> weights = {45, 30, 12, 10, 3};
    constexpr std::array primary = {"{name: Schermo integrato, frame: [0, 0, 1440, 900]}",
                                    "{name: Schermo integrato, frame: [0, 0, 1728, 1117]}",
                                    "{name: Schermo integrato, frame: [0, 0, 1280, 800]}"};
    constexpr std::array second = {"{name: Proiettore, frame: [1728, 0, 1920, 1080]}",
                                   "{name: Proiettore, frame: [-1280, 100, 1280, 720]}",
                                   "{name: Proiettore, frame: [1728, -300.5, 1080, 1920]}"};
    constexpr std::array third = {"{name: Sopra, frame: [0, 1117, 1920, 1080]}",
                                  "{name: Sopra, frame: [-200, 1200, 2560, 1440]}"};
    const auto count = numbers_.weighted(weights);
    if (count == 4) {
        written.mac.emplace_back("displays: []");
    } else if (count > 0) {
        written.displays.emplace_back(numbers_.pick(primary));
        if (count < 3) written.displays.emplace_back(numbers_.pick(second));
        if (count == 2) written.displays.emplace_back(numbers_.pick(third));
    }
    if (count != 4) plan.displays.emplace_back("Schermo integrato");
    if (count == 1 || count == 2) plan.displays.emplace_back("Proiettore");
    if (count == 2) plan.displays.emplace_back("Sopra");
    if (numbers_.chance(12)) written.mac.emplace_back("separate-spaces: no");
}

void RandomMac::drawPermissions(WrittenClass& written, Plan& plan) {
    constexpr std::array<int, 4> weights = {80, 12, 5, 3};
    constexpr std::array states = {"granted", "undecided", "refused", "restricted"};
    for (const std::string device : {"microphone", "camera"}) {
        const auto state = numbers_.weighted(weights);
        if (state == 1) ++plan.prompts;
        if (state != 0) written.mac.push_back(device + ": " + states[state]);
    }
    if (numbers_.chance(6)) {
        plan.accessibilityIsGranted = false;
        written.mac.emplace_back("accessibility: refused");
    }
    if (numbers_.chance(20)) written.mac.emplace_back("lost-accessibility: freezes");
}

void RandomMac::drawSettings(WrittenClass& written, Plan& plan) {
    constexpr std::array saved = {"vt_fullName: Maria Bianchi, vt_email: maria.bianchi@example.com",
                                  "vt_fullName: \"Łukasz D’Àmico \", vt_email: \"l@example.com\""};
    constexpr std::array servers = {"vt_serverURL: \"https://server.vantrel.example/\"",
                                    "vt_serverURL: \"https://server.vantrel.example\"", "vt_serverURL: \"\"",
                                    "vt_serverURL: \"https://elsewhere.example\""};
    constexpr std::array<int, 4> weights = {50, 30, 15, 5};
    plan.nameIsSaved = numbers_.chance(60);
    std::string settings = plan.nameIsSaved ? numbers_.pick(saved) : "";
    if (numbers_.chance(12)) {
        settings += std::string(settings.empty() ? "" : ", ") + servers[numbers_.weighted(weights)];
    }
    if (!settings.empty()) written.mac.push_back("settings: {" + settings + "}");
}

void RandomMac::drawFront(WrittenClass& written) {
    constexpr std::array activations = {"brings", "refused", "ignored", "late"};
    constexpr std::array ways = {"at-once", "ordered-front", "joining-all", "never"};
    constexpr std::array durations = {"0", "0.3", "1", "1.5", "3"};
    constexpr std::array lags = {"0", "0.1", "0.29", "0.3", "0.31", "1"};
    if (numbers_.chance(45)) written.mac.push_back("activation: " + std::string(numbers_.pick(activations)));
    if (numbers_.chance(35)) written.mac.push_back("alerts-let-in: " + std::string(numbers_.pick(ways)));
    if (numbers_.chance(12)) written.mac.emplace_back("alerts-activate: yes");
    if (numbers_.chance(20)) written.mac.push_back("full-screen-takes: " + std::string(numbers_.pick(durations)));
    if (numbers_.chance(25)) written.mac.push_back("window-flags-lag: " + std::string(numbers_.pick(lags)));
}

}  // namespace vantrel::simulation
