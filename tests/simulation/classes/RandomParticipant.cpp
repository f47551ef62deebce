#include "tests/simulation/classes/RandomParticipant.h"

#include <array>
#include <utility>

#include "tests/simulation/classes/RandomApplications.h"

namespace vantrel::simulation {

void RandomParticipant::draw(Span lockdown, int count) {
    RandomMoments moments(numbers_, lockdown, plan_.latency);
    for (; count > 0; --count) step(moments.next());
}

void RandomParticipant::add(Milliseconds at, std::string action) {
    written_.timeline.push_back({at, {std::move(action)}});
}

void RandomParticipant::step(Milliseconds at) {
    constexpr std::array<int, 7> weights = {38, 22, 22, 7, 5, 4, 2};
    constexpr std::array<void (RandomParticipant::*)(Milliseconds), 7> themes = {
        &RandomParticipant::pressKey,     &RandomParticipant::useApplication, &RandomParticipant::useWindow,
        &RandomParticipant::useMenu,      &RandomParticipant::askToEnd,       &RandomParticipant::quit,
        &RandomParticipant::pressAtRandom};
    (this->*themes[numbers_.weighted(weights)])(at);
}

void RandomParticipant::pressKey(Milliseconds at) {
    constexpr std::array keys = {
        "cmd+tab",   "cmd+tab",     "cmd+q",       "cmd+w",         "cmd+h",       "cmd+m",
        "cmd+n",     "cmd+t",       "cmd+l",       "cmd+d",         "cmd+space",   "cmd+alt+escape",
        "ctrl+up",   "ctrl+down",   "cmd+ctrl+f",  "cmd+1",         "cmd+9",       "cmd+c",
        "cmd+v",     "cmd+shift+3", "cmd+shift+4", "cmd+grave",     "alt+tab",     "ctrl+alt+f2",
        "f3",        "f4",          "f11",         "escape",        "a",           "shift+a",
        "return",    "space",       "code-110",    "cmd+shift+tab", "cmd+alt+d",   "ctrl+cmd+q",
        "alt+space", "ctrl+left",   "ctrl+right",  "cmd+comma",     "cmd+shift+q", "delete"};
    const std::string key = numbers_.pick(keys);
    if (!numbers_.chance(15)) return add(at, "key: " + key);
    add(at, "hold-key: {key: " + key + ", times: " + std::to_string(numbers_.from(2, 12)) + "}");
}

void RandomParticipant::useApplication(Milliseconds at) {
    switch (numbers_.below(9)) {
        case 0:
        case 1:
        case 2:
            return add(at, "application: " + RandomApplications::application(numbers_));
        case 3:
        case 4:
            return add(at, "application: " + someApplication());
        case 5:
            return add(at, "application: " + plan_.browser);
        case 6:
            return add(at, "quit: " + someApplication());
        case 7:
            return add(at, "kill: " + someApplication());
        default:
            return add(at, "hide-others: " + (numbers_.chance(60) ? plan_.browser : someApplication()));
    }
}

void RandomParticipant::useWindow(Milliseconds at) {
    const std::string whose = numbers_.chance(70) ? plan_.browser : someApplication();
    const auto pair = [this](long long least, long long most) {
        const auto first = std::to_string(numbers_.from(least, most));
        return "[" + first + ", " + std::to_string(numbers_.from(least, most)) + "]";
    };
    switch (numbers_.below(8)) {
        case 0:
            return add(at, "move-window: {of: " + whose + ", to: " + pair(-200, 900) + "}");
        case 1:
            return add(at, "resize-window: {of: " + whose + ", to: " + pair(300, 1'500) + "}");
        case 2:
            add(at, "minimise-window: " + whose);
            if (numbers_.chance(70)) add(at + numbers_.moment(100, 6'000), "restore-window: " + whose);
            return;
        case 3:
            add(at, "toggle-full-screen: " + someApplication());
            return;
        case 4:
            return add(at, "toggle-full-screen: " + whose);
        case 5:
            return add(at, "open-window: " + whose);
        case 6:
            return add(at, "open-window: {of: " + whose + ", title: Appunti, frame: [1500, 100, 300, 200], layer: " +
                               (numbers_.chance(50) ? "1000}" : "25}"));
        default:
            return add(at, "close-window: " + someApplication());
    }
}

void RandomParticipant::useMenu(Milliseconds at) {
    add(at, numbers_.chance(75) ? "do: open the status menu" : "do: open the application menu");
    if (numbers_.chance(85)) add(at + numbers_.moment(0, 9'000), "do: close the menu");
}

/// And thinks better of it, or lets the question stand for a while.
void RandomParticipant::askToEnd(Milliseconds at) {
    add(at, "do: open the status menu");
    at += numbers_.moment(0, 3'000);
    add(at, "choose: Termina sessione");
    add(at + numbers_.moment(0, 20'000), "answer: Annulla");
}

void RandomParticipant::quit(Milliseconds at) {
    constexpr std::array ways = {"key: Command-Q", "key: Command-Q", "do: log out", "do: close the window",
                                 "key: Command-W"};
    add(at, numbers_.pick(ways));
    if (!numbers_.chance(20)) return;
    add(at, "do: open the application menu");
    add(at + numbers_.moment(0, 2'000), "choose: Esci da Vantrel");
}

void RandomParticipant::pressAtRandom(Milliseconds at) {
    constexpr std::array presses = {"press: Avvia sessione protetta",
                                    "press: Nuova sessione",
                                    "key: Return",
                                    "answer: Annulla",
                                    "permission: allow",
                                    "type: {code: BBB222}"};
    add(at, numbers_.pick(presses));
}

std::string RandomParticipant::someApplication() {
    constexpr std::array often = {"Note", "Anteprima", "Terminal", "Spotlight", "Posta"};
    if (!plan_.applications.empty() && numbers_.chance(60)) return numbers_.pick(plan_.applications);
    return numbers_.pick(often);
}

}  // namespace vantrel::simulation
