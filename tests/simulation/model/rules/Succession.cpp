#include "tests/simulation/model/rules/Succession.h"

#include <algorithm>
#include <array>
#include <set>

#include "tests/simulation/model/acts/Part.h"

namespace vantrel::simulation {
namespace {

struct Step {
    std::string_view kind;
    std::string_view text;         // its beginning
    std::string_view otherKind{};  // or this
    std::string_view otherText{};
};

bool isStep(const Entry& entry, const Step& step) {
    return entry.begins(step.kind, step.text) ||
           (!step.otherKind.empty() && entry.begins(step.otherKind, step.otherText));
}

constexpr std::string_view stopped = "[HEARTBEAT] Fermato";
constexpr std::string_view separator = "🔒 ========================================";

struct Pair {
    Step one;
    Step other;
    bool follows = true;   // after the one comes nothing but the other
    bool precedes = true;  // before the other comes nothing but the one
    bool atOnce = true;    // and both in one moment
};

constexpr Step microphone{"log", "[TCC] Microfono: stato", "permission", "microphone is requested"};
constexpr Step camera{"log", "[TCC] Camera: stato", "permission", "camera is requested"};
constexpr Step attempt{"log", "[FULLSCREEN] Tentativo "};
constexpr Step fullScreen{"element", "AXFullScreen = true of "};

constexpr std::array pairs{
    Pair{{"log", "🔒 VERIFICA ACCESSIBILITY"}, {"log", separator}, true, false},
    Pair{{"log", separator}, {"log", "🔒 VERIFICA ACCESSIBILITY"}, false, true},
    Pair{{"log", separator}, {"log", "🔒 AXIsProcessTrusted: true"}, false, true},
    Pair{{"log", "🔒 AXIsProcessTrusted: true"}, {"log", "✅ Accessibility OK"}},
    Pair{{"log", "✅ Accessibility OK"}, {"log", separator}, true, false},
    Pair{{"log", separator}, {"log", "🔒 ATTIVAZIONE LOCKDOWN"}, false, true},
    Pair{{"log", "🔒 ATTIVAZIONE LOCKDOWN"}, {"log", separator}, true, false},
    Pair{{"log", "✅ Step 1/4: Fullscreen completato"}, {"log", "🔒 Step 2/4: "}},
    Pair{{"log", "[LOCKDOWN] ✅ Keyboard hook"}, {"log", "✅ Step 2/4: "}, true, false},
    Pair{{"log", "🔒 Step 2/4: "}, {"log", "[HOOK] ⚠ Permessi"}, false, true},
    Pair{{"log", "[HOOK] ⚠ Permessi"}, {"log", "✅ Step 2/4: "}, true, false},
    Pair{{"log", "✅ Step 2/4: "}, {"log", "🔒 Step 3/4: "}},
    Pair{{"log", "[MONITOR] Fullscreen già confermato"}, {"log", "[MONITOR] Monitoraggio avviato"}, true, false},
    Pair{{"log", "✅ Step 3/4: "}, {"log", "🔒 Step 3.5: "}},
    Pair{{"log", "🔒 Step 1/4: "}, microphone},
    Pair{microphone, camera},
    // A second activation starts the services of the first anew, elsewhere in its order.
    Pair{
        {"log", "[MONITOR] Monitoraggio avviato"}, {"log", "✅ Step 3/4: ", "log", "[HEARTBEAT] Avviato "}, true, false},
    Pair{{"log", "[MONITOR] Monitoraggio avviato", "log", "🔒 Step 3/4: "}, {"log", "✅ Step 3/4: "}, false, true},
    Pair{{"status item", "is installed"}, {"status item", "is titled ", "status item", "is removed: "}, true, false},
    Pair{
        {"log", "✅ Step 4/4: ", "log", "[MONITOR] Monitoraggio avviato"}, {"log", "[HEARTBEAT] Avviato "}, false, true},
    Pair{attempt, {"log", "[FULLSCREEN] Nessuna finestra AX"}, false, true, false},
    Pair{attempt, {"log", "[FULLSCREEN] ✅ Già in fullscreen"}, false, true, false},
    Pair{attempt, fullScreen, false, true, false},
    Pair{
        fullScreen, {"log", "[FULLSCREEN] ✅ Fullscreen attivato", "log", "[FULLSCREEN] AX fallito"}, true, true, false},
    Pair{{"log", "[BLACKOUT] Attivato — escluso: "}, {"log", "✅ Step 3.5: "}, true, false},
    Pair{{"log", "✅ Step 3.5: "}, {"log", "🔒 Step 4/4: "}},
    Pair{{"status item", "is titled "}, {"status item", "has the menu"}},
    Pair{{"status item", "has the menu"}, {"log", "✅ Step 4/4: "}, false, true},
    Pair{{"log", separator}, {"log", "✅✅✅ LOCKDOWN COMPLETO"}, false, true},
    Pair{{"log", "✅✅✅ LOCKDOWN COMPLETO"}, {"log", separator}, true, false},
    Pair{{"setting", "vt_serverURL"}, {"setting", "vt_fullName"}},
    Pair{{"setting", "vt_fullName"}, {"setting", "vt_email"}},
    Pair{{"log", "[HEARTBEAT] Disconnessione inviata: "}, {"log", stopped}, true, false},
    Pair{{"window", "Vantrel is in front"}, {"client", "asks to come to the front"}, true, false},
    Pair{{"view", "endView is shown"}, {"log", "[SESSION] Schermata fine visibile"}, true, false},
};

constexpr std::array launch{
    Pair{{"log", "[BROWSER] Reset stato"}, {"log", "[BROWSER] URL Meet: "}},
    Pair{{"log", "[BROWSER] URL Meet: "}, {"log", "[BROWSER] Browser selezionato: "}},
    Pair{{"log", "[BROWSER] Browser selezionato: "}, {"log", "[BROWSER] Finestre prima: "}},
};

void judgePair(const Entry& one, const Entry& other, const Pair& pair, Verdict& verdict) {
    const bool first = isStep(one, pair.one);
    const bool second = isStep(other, pair.other);
    const bool together = first && second && (one.at == other.at || !pair.atOnce);
    if (pair.follows && first && !together) {
        verdict.object(one.line, "it is not followed by: " + std::string(pair.other.text));
    }
    if (pair.precedes && second && !together) {
        verdict.object(other.line, "it does not follow: " + std::string(pair.one.text));
    }
}

}  // namespace

void eachStepIsFollowed(const Transcript& transcript, Verdict& verdict) {
    const Entry* main = nullptr;
    const Entry* launched = nullptr;
    bool beats = !transcript.entries().empty() && transcript.entries().front().is("prelude");
    std::set<std::int64_t> launches;
    for (const Entry& entry : transcript.entries()) {
        const Part part = partOf(entry);
        if (part == Part::main && !isOfPlatform(transcript.entries(), entry)) {
            if (main != nullptr) {
                for (const Pair& pair : pairs) {
                    // Of heartbeats that never began nothing is stopped.
                    const bool stops = pair.other.text == stopped && pair.follows;
                    if (!stops || beats) judgePair(*main, entry, pair, verdict);
                }
                if (main->is("log", separator) && entry.is("log", separator))
                    verdict.object(entry.line, "nothing stands between two lines of signs");
            }
            main = &entry;
            beats = !entry.is("log", stopped) && (beats || entry.begins("log", "[HEARTBEAT] Avviato "));
        }
        if (part != Part::launch) continue;
        // Two launches at one moment have no order.
        const bool begins = entry.begins("log", "[BROWSER] Reset stato");
        const bool several = begins && !launches.insert(entry.at).second;
        if (several) return;
        if (launched != nullptr && !begins) {
            for (const Pair& pair : launch) judgePair(*launched, entry, pair, verdict);
        }
        launched = &entry;
    }
}

}  // namespace vantrel::simulation
