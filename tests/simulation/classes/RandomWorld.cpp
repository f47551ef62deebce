#include "tests/simulation/classes/RandomWorld.h"

#include <array>
#include <utility>

#include "tests/simulation/classes/RandomApplications.h"
#include "tests/simulation/classes/RandomReplies.h"

namespace vantrel::simulation {

void RandomWorld::draw(Span span, int count) {
    RandomMoments moments(numbers_, span, plan_.latency);
    for (; count > 0; --count) step(moments.next());
}

void RandomWorld::add(Milliseconds at, std::string action) {
    written_.timeline.push_back({at, {std::move(action)}});
}

void RandomWorld::step(Milliseconds at) {
    constexpr std::array<int, 8> weights = {26, 7, 18, 11, 12, 13, 9, 4};
    constexpr std::array<void (RandomWorld::*)(Milliseconds), 8> themes = {
        &RandomWorld::changeDisplays, &RandomWorld::changePermissions, &RandomWorld::bendReplies,
        &RandomWorld::startPrograms,  &RandomWorld::disturbKeyboard,   &RandomWorld::failElements,
        &RandomWorld::failSystem,     &RandomWorld::closeLid};
    (this->*themes[numbers_.weighted(weights)])(at);
}

void RandomWorld::changeDisplays(Milliseconds at) {
    constexpr std::array plugged = {
        "{name: Proiettore, frame: [1440, 0, 1920, 1080]}", "{name: Proiettore, frame: [-1920, 0, 1920, 1080]}",
        "{name: Terzo, frame: [3360, 0, 1280, 720]}", "{name: Sopra, frame: [0, 900, 1920, 1080]}"};
    constexpr std::array arranged = {
        "{name: Proiettore, frame: [1440, -180, 1920, 1080]}", "{name: Schermo integrato, frame: [0, 0, 1680, 1050]}",
        "{name: Proiettore, frame: [1440.5, 0.5, 1919, 1080]}", "{name: Sopra, frame: [0, 1050, 1280, 720]}"};
    switch (numbers_.below(8)) {
        case 0:
        case 1:
        case 2:
            return add(at, std::string("plug: ") + numbers_.pick(plugged));
        case 3:
        case 4: {
            const auto name = display();
            add(at, "unplug: " + name);
            if (numbers_.chance(60)) return;
            at += numbers_.moment(0, 5'000);
            return add(at, std::string("plug: ") + numbers_.pick(plugged));
        }
        case 5:
            return add(at, std::string("arrange: ") + numbers_.pick(arranged));
        case 6: {
            const auto name = display();
            add(at, "mirror: " + name);
            if (numbers_.chance(70)) add(at + numbers_.moment(0, 8'000), "unmirror: " + name);
            return;
        }
        default:
            return add(at, "display-notices: {count: " + std::to_string(numbers_.from(0, 8)) + ", every: 0.06}");
    }
}

void RandomWorld::changePermissions(Milliseconds at) {
    constexpr std::array states = {"undecided", "restricted", "refused", "granted"};
    if (numbers_.chance(60)) {
        add(at, "accessibility: refused");
        if (numbers_.chance(75)) add(at + numbers_.moment(0, 9'000), "accessibility: granted");
        return;
    }
    const std::string device = numbers_.chance(50) ? "microphone: " : "camera: ";
    add(at, device + numbers_.pick(states));
}

void RandomWorld::bendReplies(Milliseconds at) {
    RandomReplies replies(numbers_);
    if (numbers_.chance(18)) return add(at, "do: let the server reply as usual");
    if (numbers_.chance(10)) return add(at, "reply: " + replies.toJoin());
    add(at, "reply: " + replies.toHeartbeat());
}

void RandomWorld::startPrograms(Milliseconds at) {
    switch (numbers_.below(5)) {
        case 0:
            return add(at, "launch: {name: Vantrel, bundle-identifier: biz.quorrin.vantrel}");
        case 1:
            return add(at, "exit: Note");
        default:
            return add(at, "launch: " + RandomApplications::application(numbers_));
    }
}

void RandomWorld::disturbKeyboard(Milliseconds at) {
    switch (numbers_.below(5)) {
        case 0:
            return add(at, "hang: " + secondsText(numbers_.moment(100, 4'000)));
        case 1:
            add(at, "taps: refused");
            return add(at + numbers_.moment(100, 20'000), "taps: given");
        case 2:
            return add(at, "close-cover: " + display());
        default:
            add(at, "secure-input: yes");
            return add(at + numbers_.moment(100, 9'000), "secure-input: no");
    }
}

void RandomWorld::failElements(Milliseconds at) {
    constexpr std::array what = {"write: AXFullScreen",   "write: AXFullScreen", "write: AXPosition",
                                 "write: AXSize",         "write: AXFrontmost",  "read: AXFullScreen",
                                 "read: AXWindows",       "read: AXPosition",    "read: AXSize",
                                 "read: AXFocusedWindow", "read: AXCloseButton", "action: AXPress"};
    constexpr std::array errors = {"-25200", "-25204", "-25205", "-25202", "-25211", "-25212", "0"};
    const int kind = static_cast<int>(numbers_.below(10));
    if (kind < 2) return add(at, "do: let elements work as usual");
    if (kind < 4) {
        add(at, "silence: " + plan_.browser);
        if (numbers_.chance(75)) add(at + numbers_.moment(0, 12'000), "unsilence: " + plan_.browser);
        return;
    }
    const std::string times = numbers_.chance(75) ? ", times: " + std::to_string(numbers_.from(1, 12)) : "";
    const std::string fault = std::string(numbers_.pick(what)) + ", error: ";
    add(at, "fail-elements: {" + fault + numbers_.pick(errors) + times + "}");
}

void RandomWorld::failSystem(Milliseconds at) {
    switch (numbers_.below(4)) {
        case 0:
            return add(at, "fail-json: " + std::to_string(numbers_.from(1, 3)));
        case 1:
            add(at, "window-list: fails");
            if (numbers_.chance(85)) add(at + numbers_.moment(0, 4'000), "window-list: works");
            return;
        case 2:
            add(at, "opening: fails");
            return add(at + numbers_.moment(0, 9'000), "opening: works");
        default:
            add(at, numbers_.chance(50) ? "refuse-addresses: heartbeat" : "refuse-addresses: meet");
            return add(at + numbers_.moment(0, 20'000), "refuse-addresses: \"\"");
    }
}

void RandomWorld::closeLid(Milliseconds at) {
    constexpr std::array durations = {"5", "59.5", "600", "3600", "40000"};
    add(at, std::string("close-lid: ") + numbers_.pick(durations));
}

std::string RandomWorld::display() {
    constexpr std::array others = {"Proiettore", "Proiettore", "Terzo", "Sopra", "Schermo integrato"};
    if (!plan_.displays.empty() && numbers_.chance(50)) return plan_.displays.back();
    return numbers_.pick(others);
}

}  // namespace vantrel::simulation
