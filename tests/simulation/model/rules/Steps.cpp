#include "tests/simulation/model/rules/Steps.h"

#include <array>
#include <set>
#include <utility>

#include "tests/simulation/model/acts/BlockedKey.h"
#include "tests/simulation/model/acts/Part.h"
#include "tests/simulation/model/reading/Words.h"
#include "tests/simulation/model/world/World.h"

namespace vantrel::simulation {
namespace {

struct Stair {
    std::string_view kind;
    std::string_view text;  // its beginning
    int height;
    bool repeats = false;
};

constexpr std::array stairs{
    Stair{"log", "[SESSION] Fine sessione: ", 0},
    Stair{"log", "[HOOK] Hook tastiera disattivato", 1},
    Stair{"log", "[MONITOR] Monitoraggio fermato", 2},
    Stair{"overlay", "is hidden at ", 3, true},
    Stair{"overlay", "is closed at ", 3, true},
    Stair{"log", "[BLACKOUT] Overlay deattivato", 4},
    Stair{"log", "[BROWSER] Kill ", 5},
    Stair{"log", "[BROWSER] Chiudo finestra", 5},
    Stair{"element", "AX", 6, true},
    Stair{"log", "[SESSION] Browser terminato", 7},
    Stair{"request", "POST ", 8},
    Stair{"log", "[HEARTBEAT] Disconnessione inviata", 9},
    Stair{"log", "[HEARTBEAT] Fermato", 10},
    Stair{"status item", "is removed", 11},
    Stair{"window", "Vantrel has the style", 12},
    Stair{"window", "Vantrel is shown", 13},
    Stair{"window", "Vantrel is in front", 14},
    Stair{"client", "asks to come to the front", 15},
    Stair{"text", "endMessageLabel", 16},
    Stair{"view", "joinView is hidden", 17},
    Stair{"view", "endView is shown", 18},
    Stair{"log", "[SESSION] Schermata fine visibile", 19},
};
constexpr int top = 19;

const Stair* stairOf(const Entry& entry) {
    for (const Stair& stair : stairs) {
        if (entry.begins(stair.kind, stair.text)) return &stair;
    }
    return nullptr;
}

}  // namespace

void theEndHasItsOrder(const Transcript& transcript, Verdict& verdict) {
    int height = top;
    bool kills = false;  // the browser is being given back
    for (const Entry& entry : transcript.entries()) {
        const Part part = partOf(entry);
        if (part != Part::main || isOfPlatform(transcript.entries(), entry)) continue;
        const bool begins = entry.begins("log", "[SESSION] Fine sessione: ");
        if (begins && height != top) verdict.object(entry.line, "the end before is not complete");
        if (begins) height = -1;
        if (height == top) continue;
        const Stair* const stair = stairOf(entry);
        // The system removes a tap, and the browser is asked, quits or is killed, as it comes.
        if (stair == nullptr && (entry.is("tap") || entry.is("application"))) continue;
        if (stair == nullptr) {
            verdict.object(entry.line, "it is no step of an end");
            continue;
        }
        const bool again = stair->height == height && stair->repeats;
        if (stair->height <= height && !again) verdict.object(entry.line, "it comes too late, or twice");
        if (stair->height == 5) kills = true;
        if (stair->height == 7 && !kills) verdict.object(entry.line, "no browser is given back");
        if (stair->height > 7 && kills && height < 7) verdict.object(entry.line, "the browser's end is not told of");
        if (stair->height >= 7) kills = false;
        height = stair->height;
    }
}

void oneStatusItem(const Transcript& transcript, Verdict& verdict) {
    const bool whole = transcript.entries().empty() || !transcript.entries().front().is("prelude");
    int items = 0;
    for (const Entry& entry : transcript.entries()) {
        if (entry.is("status item", "is installed")) ++items;
        if (entry.begins("status item", "is removed")) --items;
        if (!whole) continue;
        if (items < 0 || items > 2) verdict.object(entry.line, std::to_string(items) + " status items");
        items = items < 0 ? 0 : items;
        if (entry.begins("log", "✅ Step 4/4: ") && items != 1) verdict.object(entry.line, "a lockdown has one");
        if (entry.begins("log", "[SESSION] Schermata fine") && items != 0)
            verdict.object(entry.line, "it is still there");
    }
}

void swallowedKeysAreNamed(const Transcript& transcript, Verdict& verdict) {
    constexpr std::string_view log = "[HOOK] 🚫 Bloccato: ";
    std::string_view told;
    for (const Entry& entry : transcript.entries()) {
        if (entry.begins("log", log)) {
            if (!told.empty()) verdict.object(entry.line, "the key before was not swallowed");
            told = entry.text.substr(log.size());
        }
        if (!entry.is("key")) continue;
        const bool swallowed = entry.text.ends_with(" is swallowed");
        const std::string_view name = blockedName(entry.text.substr(0, entry.text.find(' ')));
        if (swallowed && (told.empty() || told != name)) verdict.object(entry.line, "the log does not say so");
        if (!swallowed && !told.empty()) verdict.object(entry.line, "the log says that it was swallowed");
        told = {};
    }
}

void whatIsNamedIsThere(const Transcript& transcript, Verdict& verdict) {
    if (!transcript.entries().empty() && transcript.entries().front().is("prelude")) return;
    constexpr std::string_view process = " of process ";
    constexpr std::string_view window = ", window #";
    std::set<std::int64_t> processes;
    std::set<std::int64_t> windows;
    std::set<std::pair<std::int64_t, std::int64_t>> closed;  // when and which
    for (const Entry& entry : transcript.entries()) {
        NamedProcess named;
        const bool tells = entry.is("application") || entry.is("process");
        if (tells && readNamedProcess(entry.text, named)) processes.insert(named.pid);
        if (entry.begins("app window", "#")) windows.insert(Words(entry.text.substr(1)).integer().value_or(0));
        const std::size_t settled = entry.begins("log", "[BROWSER] ") ? entry.text.rfind("): ") : entry.text.npos;
        if (settled != entry.text.npos && entry.text.find(" PID (") != entry.text.npos &&
            processes.count(integerOf(entry.text.substr(settled + 3)).value_or(0)) == 0)
            verdict.object(entry.line, "no such process");
        const std::size_t owner = entry.is("element") ? entry.text.find(process) : entry.text.npos;
        if (owner == entry.text.npos) continue;
        Words words(entry.text.substr(owner + process.size()));
        if (processes.count(words.integer().value_or(0)) == 0) verdict.object(entry.line, "no such process");
        if (!words.skip(window)) continue;
        const std::int64_t number = words.integer().value_or(0);
        if (windows.count(number) == 0) verdict.object(entry.line, "no such window");
        const bool again =
            entry.begins("element", "AXPress") && words.atEnd() && !closed.insert({entry.at, number}).second;
        if (again) verdict.object(entry.line, "it was closed just now");
    }
}

}  // namespace vantrel::simulation
