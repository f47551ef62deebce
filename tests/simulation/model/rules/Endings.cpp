#include "tests/simulation/model/rules/Endings.h"

#include <array>

#include "tests/simulation/model/acts/Part.h"

namespace vantrel::simulation {
namespace {

constexpr std::string_view ending = "[SESSION] Fine sessione: ";
constexpr std::string_view ended = "[SESSION] Schermata fine visibile, join hidden: true, end hidden: false";
constexpr std::string_view activated = "🔒 ATTIVAZIONE LOCKDOWN";

bool isHeartbeat(const Entry& entry) {
    return entry.begins("request", "POST ") && entry.text.ends_with("/api/heartbeat");
}

bool isNotice(const Entry& entry) {
    return isHeartbeat(entry) && entry.further.size() == 2 &&
           entry.further[1].find("\"disconnecting\":true") != std::string_view::npos;
}

/// Faults that keep requests from being made.
bool breaksRequests(const Entry& entry) {
    return entry.begins("fault", "JSON serialisations") || entry.begins("fault", "no URL is formed");
}

/// A transcript without its prelude does not tell what stood before it.
bool isWhole(const Transcript& transcript) {
    return transcript.entries().empty() || !transcript.entries().front().is("prelude");
}

}  // namespace

void oneEndForEachLockdown(const Transcript& transcript, Verdict& verdict) {
    bool stands = !isWhole(transcript);
    std::string_view message;
    for (const Entry& entry : transcript.entries()) {
        if (entry.is("log", activated)) stands = true;
        if (entry.begins("log", ending)) {
            if (!stands) verdict.object(entry.line, "a session ends though no lockdown stands");
            stands = false;
            message = entry.text.substr(ending.size());
        }
        const bool shown = entry.begins("text", "endMessageLabel: \"");
        if (shown && entry.text.find(message) == std::string_view::npos) {
            verdict.object(entry.line, "the end screen tells of another cause");
        }
    }
}

void oneNoticeForEachEnd(const Transcript& transcript, Verdict& verdict) {
    enum class State { none, beats, ending, told };
    State state = isWhole(transcript) ? State::none : State::beats;
    bool broken = false;
    bool seen = !isWhole(transcript);
    for (const Entry& entry : transcript.entries()) {
        broken = broken || breaksRequests(entry);
        if (entry.begins("log", "[HEARTBEAT] Avviato")) state = State::beats;
        if (entry.is("log", activated)) seen = true;
        if (entry.begins("log", ending)) state = State::ending;
        if (isNotice(entry)) {
            if (state != State::ending) verdict.object(entry.line, "a notice without an end, or a second one");
            state = State::told;
        } else if (isHeartbeat(entry) && state != State::beats) {
            verdict.object(entry.line, "a heartbeat without a lockdown");
        }
        if (!entry.is("log", ended)) continue;
        if (state == State::ending && seen && !broken) verdict.object(entry.line, "the server was not told of the end");
        state = State::none;
    }
}

void noTapWithoutLockdown(const Transcript& transcript, Verdict& verdict) {
    bool stands = !isWhole(transcript);
    bool tapped = stands;
    const bool whole = !stands;
    bool tries = false;  // beside the one that stands
    for (const Entry& entry : transcript.entries()) {
        if (entry.is("log", activated)) stands = true;
        if (entry.begins("log", ending)) stands = false;
        const bool tried = isOfPlatform(transcript.entries(), entry);
        if (entry.is("tap", "is installed")) {
            if (!tried && (!stands || (tapped && whole)))
                verdict.object(entry.line, "no lockdown stands, or it has one");
            tries = tried;
            tapped = true;
        }
        if (entry.is("tap", "is removed")) {
            if (!tapped) verdict.object(entry.line, "there is none");
            tapped = tries;
            tries = false;
        }
        const bool swallowed = entry.is("key") && entry.text.ends_with(" is swallowed");
        if (swallowed && !tapped) verdict.object(entry.line, "there is no tap");
        if (entry.is("log", ended) && tapped) verdict.object(entry.line, "the tap is still there");
    }
}

void noMeetingWithoutLockdown(const Transcript& transcript, Verdict& verdict) {
    // Safari's window is looked for for 12 seconds, and 3 more pass before the next step.
    constexpr std::int64_t longest = 16000;
    const Entry* opened = nullptr;
    bool excused = false;
    for (const Entry& entry : transcript.entries()) {
        if (opened != nullptr && !excused && entry.at - opened->at > longest) {
            verdict.object(opened->line, "neither a lockdown nor an end has come of it");
            opened = nullptr;
        }
        // What the main queue waits for.
        if (entry.is("alert") || entry.is("lid") || entry.begins("fault", "the client's main thread hangs"))
            excused = true;
        if (entry.is("log") && entry.text.starts_with("[BROWSER] Lancio ")) {
            opened = &entry;
            excused = false;
        }
        const bool closes = entry.is("log", "✅✅✅ LOCKDOWN COMPLETO E ATTIVO ✅✅✅") || entry.begins("log", ending) ||
                            entry.begins("log", "[BROWSER] ❌") || entry.is("client", "quits");
        if (closes) opened = nullptr;
    }
}

void theEndIsShort(const Transcript& transcript, Verdict& verdict) {
    // The notice and the browser's end, and half a second for each window in full screen.
    constexpr std::int64_t longest = 5000 + 2200;
    const Entry* begun = nullptr;
    std::int64_t allowed = 0;
    bool silent = false;
    for (const Entry& entry : transcript.entries()) {
        silent = silent || (entry.is("fault") && entry.text.ends_with(" does not answer"));
        silent = silent || entry.begins("fault", "the client's main thread hangs");
        if (entry.begins("log", ending)) {
            begun = &entry;
            allowed = longest;
        }
        if (entry.begins("element", "AXFullScreen = false")) allowed += 500;
        if (!entry.is("log", ended)) continue;
        const bool late = begun != nullptr && entry.at - begun->at > allowed && !silent;
        if (late) verdict.object(entry.line, "it took " + std::to_string(entry.at - begun->at) + " ms");
        begun = nullptr;
    }
}

void nothingIsLeft(const Transcript& transcript, Verdict& verdict) {
    constexpr std::array<std::string_view, 5> things{"status items", "overlays", "keyboard taps", "timers",
                                                     "observers"};
    bool stands = !isWhole(transcript);
    for (const Entry& entry : transcript.entries()) {
        if (entry.begins("log", "🔒 Demo Mode")) stands = true;
        if (entry.is("log", ended)) stands = false;
        if (!entry.is("end") || stands) continue;
        for (const std::string_view line : entry.further) {
            for (const std::string_view thing : things) {
                if (line.find(thing) != line.npos) verdict.object(entry.line, std::string(thing) + " are left");
            }
        }
    }
}

}  // namespace vantrel::simulation
