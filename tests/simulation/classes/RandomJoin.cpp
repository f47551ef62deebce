#include "tests/simulation/classes/RandomJoin.h"

#include <array>
#include <utility>

namespace vantrel::simulation {

Milliseconds RandomJoin::draw(Milliseconds at, const std::string& code, bool isFirst) {
    if (isFirst && (plan_.updateIsOffered || numbers_.chance(5))) at = answerUpdate(at);
    if (numbers_.chance(18)) at = mistakes(at);
    type(at, code, isFirst);
    at += numbers_.moment(0, 2'000);
    press(at);
    // The probe and the join.
    Milliseconds outcome = at + 2 * plan_.latency;
    if (!std::exchange(plan_.accessibilityIsGranted, true)) outcome = answerAccessibility(outcome);
    const Milliseconds decided = answerPrompts(outcome);
    const Milliseconds lockdown = decided + plan_.launchTakes;
    if (numbers_.chance(22)) pressAgain(outcome, lockdown, code);
    return lockdown;
}

void RandomJoin::add(Milliseconds at, std::string action) {
    written_.timeline.push_back({at, {std::move(action)}});
}

/// A second after the launch the client asks for the version.
Milliseconds RandomJoin::answerUpdate(Milliseconds at) {
    constexpr std::array buttons = {"Più tardi", "Apri pagina download", "Più tardi", "Annulla"};
    Milliseconds seen = 1'000 + plan_.latency + numbers_.moment(200, 3'000);
    if (numbers_.chance(10)) seen += 8'000;
    add(seen, std::string("answer: ") + numbers_.pick(buttons));
    if (numbers_.chance(60)) add(seen + 300, "answer: Apri pagina download");
    return numbers_.chance(85) ? std::max(at, seen + 500) : at;
}

Milliseconds RandomJoin::mistakes(Milliseconds at) {
    constexpr std::array typed = {
        "type: {code: \"\", name: Maria Bianchi}",
        "type: {code: XXX999, name: Maria Bianchi, email: m@example.com}",
        "type: {code: chiusa, name: Maria Bianchi, email: m@example.com}",
        "type: {code: \"à è\", name: \" \", email: senza}",
        "type: {server: \"\", code: AAA111, name: \"\", email: \"\"}",
        "type: {server: \"https://elsewhere.example\", code: AAA111, name: M, email: m@example.com}"};
    add(at, numbers_.pick(typed));
    press(at + 200);
    if (numbers_.chance(30)) press(at + 210);
    add(at + 900 + 2 * plan_.latency, "type: {server: \"https://server.vantrel.example\"}");
    return at + 1'000 + 2 * plan_.latency;
}

void RandomJoin::type(Milliseconds at, const std::string& code, bool isFirst) {
    std::string written = code;
    if (numbers_.chance(25)) written = code == "AAA111" ? "aaa111" : "bbb222";
    if (numbers_.chance(8)) written = quoted(" " + written + " ");
    std::string fields = "code: " + written;
    if ((isFirst && !plan_.nameIsSaved) || numbers_.chance(10)) {
        constexpr std::array people = {", name: Maria Bianchi, email: maria.bianchi@example.com",
                                       ", name: \"José Àvila\", email: \"j+a@example.com\""};
        fields += numbers_.pick(people);
    }
    add(at, "type: {" + fields + "}");
}

void RandomJoin::press(Milliseconds at) {
    add(at, numbers_.chance(70) ? "press: Avvia sessione protetta" : "key: Return");
}

Milliseconds RandomJoin::answerAccessibility(Milliseconds outcome) {
    const Milliseconds seen = outcome + numbers_.moment(200, 3'000);
    add(seen, numbers_.chance(60) ? "answer: Apri Impostazioni di Sistema" : "answer: Annulla");
    if (numbers_.chance(85)) add(seen + 500, "accessibility: granted");
    press(seen + 1'000);
    return seen + 1'000 + 2 * plan_.latency;
}

Milliseconds RandomJoin::answerPrompts(Milliseconds outcome) {
    Milliseconds at = outcome;
    for (; plan_.prompts > 0; --plan_.prompts) {
        if (numbers_.chance(6)) continue;
        at += numbers_.moment(0, 4'000);
        add(at, numbers_.chance(80) ? "permission: allow" : "permission: refuse");
    }
    return at;
}

/// In an activation, or after it where an activation has failed.
void RandomJoin::pressAgain(Milliseconds outcome, Milliseconds lockdown, const std::string& code) {
    if (numbers_.chance(35)) {
        add(outcome + 50, "type: {code: " + (numbers_.chance(50) ? plan_.codes.back() : code) + "}");
    }
    for (auto count = numbers_.from(1, 2); count > 0; --count) press(numbers_.moment(outcome, lockdown + 10'000));
}

}  // namespace vantrel::simulation
