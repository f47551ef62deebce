#include "tests/simulation/model/acts/Part.h"

#include <algorithm>
#include <array>

namespace vantrel::simulation {
namespace {

template <std::size_t size>
bool beginsWithOne(std::string_view text, const std::array<std::string_view, size>& beginnings) {
    return std::any_of(beginnings.begin(), beginnings.end(), [&](auto each) { return text.starts_with(each); });
}

constexpr std::array<std::string_view, 10> launchLines{
    "Reset stato", "URL Meet: ",   "Browser selezionato: ", "Finestre prima: ", "Chrome già in esecuzione",
    "Lancio ",     "❌ Eseguibile", "❌ Errore lancio: ",     "Nuova finestra ",  "⚠ Finestra non trovata",
};

Part partOfBrowserLine(std::string_view text) {
    if (text == "Fullscreen retry timer cancellato") return Part::kill;
    if (beginsWithOne(text, launchLines)) return Part::launch;
    const bool settled = text.find(" PID (new): ") != text.npos || text.find(" PID (pre-existing): ") != text.npos ||
                         text.find(" PID (fallback): ") != text.npos;
    return settled ? Part::launch : Part::main;
}

Part partOfLog(std::string_view text) {
    constexpr std::array<std::string_view, 6> completions{
        "[SESSION] GET",        "[SESSION] Status parsed: ", "[UPDATE] ",
        "[HEARTBEAT] Errore (", "[HEARTBEAT] Troppi errori", "[HEARTBEAT] Sessione terminata dal backend"};
    constexpr std::array<std::string_view, 4> answers{"[TCC] Microfono: ✅", "[TCC] Microfono: ⚠️",
                                                      "[TCC] Camera: ✅", "[TCC] Camera: ⚠️"};
    constexpr std::string_view browser = "[BROWSER] ";
    if (text.starts_with(browser)) return partOfBrowserLine(text.substr(browser.size()));
    if (text.starts_with("[SESSION] Join OK")) return Part::join;
    if (text.starts_with("[MONITOR] Kill browser")) return Part::kill;
    if (text.starts_with("[HOOK] 🚫")) return Part::tap;
    if (beginsWithOne(text, completions)) return Part::completion;
    return beginsWithOne(text, answers) ? Part::permission : Part::main;
}

Part partOfApplication(std::string_view text) {
    if (text.find(" is asked to open ") != text.npos) return Part::launch;
    const bool ofClient = text.starts_with("Vantrel (500) ");
    if (ofClient || text.find(" in place of ") != text.npos) return Part::world;
    if (text.find(" is asked to come to the front") != text.npos) return Part::main;
    if (text.find(") is asked to quit") != text.npos || text.find(") is killed") != text.npos) return Part::main;
    return Part::world;
}

/// Whether this log line follows in the same moment, whatever other threads write before it.
bool isLoggedAfter(const std::vector<Entry>& entries, const Entry& entry, std::string_view log) {
    const Entry* const end = entries.data() + entries.size();
    for (const Entry* next = &entry + 1; next < end && next->at == entry.at; ++next) {
        if (next->is("log", log)) return true;
        if (next->is("tap") || next->begins("log", "[SESSION] Fine sessione: ")) return false;
    }
    return false;
}

}  // namespace

bool isOfPlatform(const std::vector<Entry>& entries, const Entry& entry) {
    if (entry.is("tap", "is installed")) return !isLoggedAfter(entries, entry, "[HOOK] Hook tastiera attivato");
    if (entry.is("tap", "is removed")) return !isLoggedAfter(entries, entry, "[HOOK] Hook tastiera disattivato");
    if (entry.is("tap", "is refused")) {
        return !isLoggedAfter(entries, entry,
                              "[HOOK] Impossibile creare event tap — controlla i permessi Accessibilità");
    }
    if (&entry == entries.data()) return false;
    if (entry.begins("overlay", "is hidden at ")) return (&entry - 1)->begins("fault", "the cover of display ");
    if (!entry.is("client", "asks to come to the front")) return false;
    for (const Entry* before = &entry - 1; before >= entries.data() && &entry - before < 6; --before) {
        if (before->at != entry.at) break;
        // A window that is in front already is not told of.
        if (before->is("window", "Vantrel is in front")) return false;
        if (before->is("window", "Vantrel has the style titled, closable, miniaturizable")) return false;
    }
    return true;
}

Part partOf(const Entry& entry) {
    constexpr std::array<std::string_view, 7> mains{"setting",   "text",        "control", "view",
                                                    "main menu", "status item", "url"};
    if (entry.is("log")) return partOfLog(entry.text);
    if (std::find(mains.begin(), mains.end(), entry.kind) != mains.end()) return Part::main;
    if (entry.is("answer") || entry.is("menu")) return Part::turn;
    if (entry.is("application")) return partOfApplication(entry.text);
    if (entry.is("request")) return entry.text.find("/api/sessions/") != entry.text.npos ? Part::join : Part::main;
    if (entry.is("client")) return entry.text == "is asked to quit" ? Part::world : Part::main;
    if (entry.is("permission")) return entry.text.ends_with(" is requested") ? Part::main : Part::world;
    if (entry.begins("alert", "is ended as [")) return Part::turn;
    if (entry.is("alert")) {
        const bool opens = entry.text.starts_with("informational: ") || entry.text.starts_with("warning: ") ||
                           entry.text.starts_with("critical: ");
        return opens ? Part::main : Part::world;
    }
    if (entry.is("window")) {
        const bool ofSystem =
            entry.text.ends_with("is closed by the participant") || entry.text.ends_with("lies above all others");
        return ofSystem ? Part::world : Part::main;
    }
    if (entry.is("tap")) return entry.text.starts_with("is disabled") ? Part::world : Part::main;
    if (entry.is("overlay")) {
        const bool ofSystem = entry.text.starts_with("is not let") || entry.text.starts_with("is seen again");
        return ofSystem ? Part::world : Part::main;
    }
    if (entry.is("element")) return entry.text.starts_with("AXFrontmost") ? Part::world : Part::main;
    if (entry.is("process") && entry.text.ends_with(") is started")) return Part::launch;
    return Part::world;
}

}  // namespace vantrel::simulation
