#include "tests/simulation/classes/RandomEnd.h"

#include <algorithm>
#include <array>
#include <utility>

#include "tests/simulation/classes/RandomReplies.h"

namespace vantrel::simulation {

Milliseconds RandomEnd::drawDuration() {
    constexpr Milliseconds heartbeat = 15'000;
    byErrors_ = numbers_.chance(4);
    if (byErrors_) return 20 * heartbeat;
    constexpr std::array<int, 4> weights = {15, 40, 35, 10};
    constexpr std::array<Milliseconds, 5> bounds = {0, 8'000, 35'000, 90'000, 240'000};
    const auto place = numbers_.weighted(weights);
    const Milliseconds drawn = numbers_.moment(bounds[place], bounds[place + 1]);
    // At a tick of the monitor.
    return numbers_.chance(30) ? drawn - drawn % 1'500 : drawn;
}

Milliseconds RandomEnd::draw(Span lockdown, const std::string& code) {
    if (byErrors_) return byErrors(lockdown);
    Milliseconds last = way(lockdown.to, code);
    if (numbers_.chance(20)) last = std::max(last, way(lockdown.to, code));
    // Where the first has not ended it.
    if (numbers_.chance(30)) last = byMenu(last + numbers_.moment(500, 20'000));
    return last;
}

void RandomEnd::add(Milliseconds at, std::string action) {
    written_.timeline.push_back({at, {std::move(action)}});
}

Milliseconds RandomEnd::way(Milliseconds at, const std::string& code) {
    constexpr std::array<int, 5> weights = {27, 25, 28, 15, 5};
    switch (numbers_.weighted(weights)) {
        case 0:
            return byServer(at, code);
        case 1:
            return byMenu(at);
        case 2:
            return byBrowser(at);
        case 3:
            return bySpace(at);
        default:
            return at;
    }
}

/// Heard with the next heartbeat.
Milliseconds RandomEnd::byServer(Milliseconds at, const std::string& code) {
    if (numbers_.chance(60)) {
        add(at, "end-session: " + code);
    } else {
        add(at, "reply: " + RandomReplies::thatEnds(numbers_.from(1, 3)));
    }
    return at + 15'000 + plan_.latency;
}

Milliseconds RandomEnd::byMenu(Milliseconds at) {
    add(at, "do: open the status menu");
    at += numbers_.chance(20) ? 0 : numbers_.moment(10, 2'000);
    add(at, "choose: Termina sessione");
    at += numbers_.chance(20) ? 0 : numbers_.moment(10, 8'000);
    add(at, numbers_.chance(90) ? "answer: Termina" : "key: Return");
    return at;
}

Milliseconds RandomEnd::byBrowser(Milliseconds at) {
    constexpr std::array ways = {"quit: ", "quit: ", "kill: ", "kill: ", "exit: ", "close-window: ", "close-window: "};
    add(at, numbers_.pick(ways) + plan_.browser);
    return at + 5'000;
}

Milliseconds RandomEnd::bySpace(Milliseconds at) {
    switch (numbers_.below(4)) {
        case 0:
            add(at, "toggle-full-screen: " + plan_.browser);
            break;
        case 1:
            add(at, "swipe: right");
            break;
        default:
            add(at, "swipe: left");
    }
    if (numbers_.chance(30)) add(at + numbers_.moment(0, 1'000), "swipe: right");
    return at + 5'000;
}

/// Twenty failed heartbeats in a row.
Milliseconds RandomEnd::byErrors(Span lockdown) {
    constexpr std::array errors = {"drops: yes", "never-comes: yes",
                                   "error: La connessione a Internet risulta non attiva."};
    const std::string error = numbers_.pick(errors);
    add(lockdown.from + numbers_.moment(0, 12'000), "reply: {to: POST /api/heartbeat, times: 22, " + error + "}");
    return lockdown.to + 25'000;
}

}  // namespace vantrel::simulation
