#include "tests/simulation/model/acts/Alerts.h"

#include <algorithm>

#include "tests/simulation/model/acts/Dispatch.h"
#include "tests/simulation/model/acts/End.h"
#include "tests/simulation/model/acts/Fullscreen.h"
#include "tests/simulation/model/acts/Part.h"

namespace vantrel::simulation {
namespace {

constexpr std::string_view accessibilityText =
    "Vantrel ha bisogno del permesso Accessibilità per controllare la finestra del browser durante la sessione "
    "protetta.\n"
    "\n"
    "Come abilitarlo:\n"
    "\n"
    "1. Clicca \"Apri Impostazioni di Sistema\" qui sotto\n"
    "2. Nella lista cerca \"Vantrel\"\n"
    "3. Attiva il toggle accanto a Vantrel\n"
    "4. Se Vantrel non è nella lista, clicca \"+\" e aggiungilo manualmente\n"
    "5. Chiudi le Impostazioni e riprova ad avviare la sessione\n"
    "\n"
    "⚠️ Senza questo permesso la sessione protetta non può essere avviata.";
constexpr std::string_view accessibilityPane =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";

void turn(Stage& stage, const Entry& entry) {
    Client& client = stage.client();
    stage.turnTo("menus and alerts open before they are answered");
    if (!entry.is("menu")) return stage.depart(entry.line, "no such alert is in front");
    stage.waitTo(std::max(stage.now(), entry.at));
    if (entry.begins("menu", "opened: ")) {
        client.menuOpen = true;
        stage.hold(false);
    }
    if (!entry.begins("menu", "closed: ")) return;
    if (!client.menuOpen) return stage.depart(entry.line, "no menu is open");
    client.menuOpen = false;
    stage.release(false);
    if (entry.text.ends_with(", chosen: Termina sessione")) {
        stage.add({.deed = Deed::manualEnd, .way = Way::event, .at = entry.at, .line = entry.line});
    }
}

/// The button, if the entry answers this alert.
std::string answerIn(const Entry& entry, std::string_view message) {
    constexpr std::string_view ended = "is ended as [";
    if (entry.begins("alert", ended) && entry.text.ends_with("]: " + std::string(message))) {
        return std::string(entry.text.substr(ended.size(), entry.text.size() - ended.size() - 3 - message.size()));
    }
    if (!entry.is("answer") || entry.text.empty()) return {};
    const std::string_view rest = entry.text.substr(1);
    const std::size_t bracket = rest.rfind("] to: " + std::string(message));
    if (bracket == rest.npos || bracket + 6 + message.size() != rest.size()) return {};
    return std::string(rest.substr(0, bracket));
}

std::string answerFor(Stage& stage, std::string_view message) {
    while (!stage.departed()) {
        const Entry* entry = nullptr;
        if (!stage.turns().empty()) {
            entry = stage.turns().front();
            stage.turns().erase(stage.turns().begin());
            stage.waitTo(std::max(stage.now(), entry->at));
        } else {
            entry = stage.peek();
            if (entry == nullptr) return {};
            if (partOf(*entry) != Part::turn) {
                dispatch(stage);
                continue;
            }
            stage.take(*entry);
        }
        std::string button = answerIn(*entry, message);
        if (!button.empty()) return button;
        turn(stage, *entry);
    }
    return {};
}

void rememberFront(Stage& stage) {
    const bool known = stage.world().front() != 0 && stage.world().front() == stage.world().lastOther();
    stage.client().questionOver = known ? stage.world().lastOther() : 0;
}

/// Where the answer's click has brought the client to the front, the platform gives that back.
void readFrontGivenBack(Stage& stage, const std::string& button) {
    stage.client().questionClosedAt = stage.now();
    const auto& launcher = stage.client().launcher;
    if (!button.empty() && launcher != nullptr && stage.world().frontName() == "Vantrel")
        acceptFrontGivenBack(stage, launcher.get());
}

void openPage(Stage& stage, const std::string& address) {
    if (address.empty()) return;
    if (stage.accept("url", "opened: " + address) != nullptr) return;
    if (stage.accept("url", "not opened: " + address) != nullptr) return;
    // An address that is none is left alone.
    const bool plain = address.starts_with("https://") && address.find_first_of(" \\\"<>{}|^`%") == address.npos;
    if (plain && !stage.world().bent()) stage.departAtNext("the download page is not opened");
}

std::string withNotes(std::string text, const std::string& notes) {
    return notes.empty() ? text : std::move(text) + "\n\nNote di rilascio:\n" + notes;
}

}  // namespace

bool isText(std::span<const std::string_view> lines, std::string_view text) {
    for (std::size_t index = 0; index < lines.size(); ++index) {
        if (index > 0) {
            if (!text.starts_with('\n')) return false;
            text.remove_prefix(1);
        }
        if (!text.starts_with(lines[index])) return false;
        text.remove_prefix(lines[index].size());
    }
    return text.empty();
}

void takeTurns(Stage& stage) {
    while (!stage.turns().empty() && !stage.departed()) {
        const Entry* const entry = stage.turns().front();
        stage.turns().erase(stage.turns().begin());
        turn(stage, *entry);
    }
}

std::string runAlert(Stage& stage, const AlertText& alert, bool fromQueue) {
    const Entry* const shown = stage.expect("alert", std::string(alert.style) + ": " + std::string(alert.message));
    if (shown == nullptr) return {};
    const std::string whole = alert.informative.empty() ? alert.buttons : alert.informative + "\n" + alert.buttons;
    if (!isText(shown->further, whole)) stage.depart(shown->line, "the alert has another text or other buttons");
    const std::string_view rule = stage.rule();
    stage.hold(fromQueue);
    std::string button = answerFor(stage, alert.message);
    if (button.empty()) {
        stage.giveUp();
        return {};
    }
    stage.release(fromQueue);
    stage.turnTo(rule);
    if (alert.buttons.find("[" + button + "]") == std::string::npos) stage.depart(shown->line, "it has no such button");
    return button;
}

void requiredPrompt(Stage& stage, const Due& due) {
    stage.turnTo("an outdated client is told so, with the page that the server names");
    const bool page = !due.note.empty();
    rememberFront(stage);
    const std::string button = runAlert(stage,
                                        {.style = "warning",
                                         .message = "Aggiornamento Vantrel richiesto",
                                         .informative = due.text,
                                         .buttons = page ? "[Apri pagina download] [Annulla]" : "[OK]"},
                                        true);
    readFrontGivenBack(stage, button);
    if (button == "Apri pagina download") openPage(stage, due.note);
}

void updatePrompt(Stage& stage, const Due& due) {
    stage.turnTo("an update is recommended or demanded as its severity says");
    const bool mandatory = due.note == "required";
    const std::string& version = due.result.title;
    AlertText alert{
        .style = "informational",
        .message = "Aggiornamento Vantrel consigliato",
        .informative = withNotes("È disponibile la versione " + version + " (la tua è 2.0-macOS).", due.text),
        .buttons = "[Apri pagina download] [Più tardi]"};
    if (mandatory) {
        alert = {.style = "warning",
                 .message = "Aggiornamento Vantrel obbligatorio",
                 .informative = withNotes(
                     "È disponibile la versione " + version + ", che è obbligatoria per partecipare alle sessioni.",
                     due.text),
                 .buttons = "[Apri pagina download]"};
    }
    rememberFront(stage);
    const std::string button = runAlert(stage, alert, true);
    readFrontGivenBack(stage, button);
    if (button == "Apri pagina download") openPage(stage, due.result.link);
}

void accessibilityAlert(Stage& stage) {
    const std::string button = runAlert(stage,
                                        {.style = "critical",
                                         .message = "Permesso Accessibilità richiesto",
                                         .informative = std::string(accessibilityText),
                                         .buttons = "[Apri Impostazioni di Sistema] [Annulla]"},
                                        true);
    if (button == "Apri Impostazioni di Sistema" && !stage.departed()) {
        const std::string pane(accessibilityPane);
        if (stage.accept("url", "not opened: " + pane) == nullptr) stage.expect("url", "opened: " + pane);
    }
}

void secondInstance(Stage& stage) {
    stage.turnTo("a second instance says so and quits");
    const std::string button = runAlert(
        stage,
        {.style = "informational", .message = "Vantrel è già in esecuzione.", .informative = {}, .buttons = "[OK]"},
        false);
    if (button.empty()) return;
    stage.expect("client", "quits");
    stage.client().quit = true;
    stage.drop(Deed::quitAnswer);
}

void manualEnd(Stage& stage) {
    stage.turnTo("the participant ends a session from the menu after a question");
    rememberFront(stage);
    const std::string button = runAlert(stage,
                                        {.style = "warning",
                                         .message = "Terminare la sessione?",
                                         .informative = "La sessione verrà registrata come terminata manualmente.",
                                         .buttons = "[Termina] [Annulla]"},
                                        false);
    readFrontGivenBack(stage, button);
    if (button == "Termina" && !stage.departed() && stage.client().inLockdown) endSession(stage, EndCause::user);
}

}  // namespace vantrel::simulation
