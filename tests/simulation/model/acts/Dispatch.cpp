#include "tests/simulation/model/acts/Dispatch.h"

#include <algorithm>
#include <array>

#include "tests/simulation/model/acts/Activation.h"
#include "tests/simulation/model/acts/Alerts.h"
#include "tests/simulation/model/acts/Blackout.h"
#include "tests/simulation/model/acts/End.h"
#include "tests/simulation/model/acts/Fullscreen.h"
#include "tests/simulation/model/acts/Heartbeat.h"
#include "tests/simulation/model/acts/JoinScreen.h"
#include "tests/simulation/model/acts/Monitor.h"
#include "tests/simulation/model/reading/Words.h"

namespace vantrel::simulation {
namespace {

void showAlert(Stage& stage, const Entry& line) {
    stage.waitTo(line.at);
    if (line.text.ends_with(": Terminare la sessione?")) {
        stage.turnTo("the participant ends a session from the menu after a question");
        if (!stage.claim(Deed::manualEnd)) return stage.depart(line.line, "nobody has chosen to end the session");
        return manualEnd(stage);
    }
    if (line.text.ends_with(": Aggiornamento Vantrel richiesto")) {
        stage.turnTo("an outdated client is told so, with the page that the server names");
        const auto due = stage.claim(Deed::requiredPrompt);
        return due ? requiredPrompt(stage, *due) : stage.depart(line.line, "no join was refused for that");
    }
    stage.turnTo("an update is recommended or demanded as its severity says");
    const auto due = stage.claim(Deed::updatePrompt);
    if (!due) return stage.depart(line.line, "no reply asks for this alert");
    updatePrompt(stage, *due);
}

/// The name of the application that Safari's completion tells of.
void nameSafari(Stage& stage, const Entry& line) {
    stage.turnTo("Safari is known by the number that the system tells");
    auto launcher = stage.client().launcher;
    // An attempt that waits keeps the launcher of a session that has ended.
    for (const Due& due : stage.dues()) {
        if (launcher == nullptr && due.strong) launcher = due.launcher;
    }
    const bool safari = launcher != nullptr && (launcher->name == "Safari" || launcher->name == "Firefox");
    if (!safari) return stage.depart(line.line, "Safari was not asked for");
    stage.take(line);
    Words words(line.text);
    if (!words.skip("[BROWSER] Safari PID: ")) return;
    const auto pid = words.integer();
    if (!pid || !words.atEnd() || stage.world().process(*pid) == nullptr)
        return stage.depart(line.line, "no such process");
    launcher->pid = pid;
    launcher->applicationKnown = true;
    // An activation or a try that was due in this very moment may have found nobody yet.
    for (Due& due : stage.dues()) {
        if (due.deed == Deed::bringSafari && due.at <= stage.now()) due.sure = false;
        const bool tries = due.deed == Deed::retry && due.at <= stage.now() && !stage.blocks(due.way);
        due.silent = due.silent || (tries && due.launcher == launcher);
    }
}

void dispatchLog(Stage& stage, const Entry& line) {
    constexpr std::string_view pid = "[BROWSER] PID aggiornato: ";
    const std::string_view text = line.text;
    if (text.starts_with("[SESSION] Fine sessione: ")) return dueEnd(stage);
    if (text.starts_with("[FULLSCREEN] ")) return dueAttempt(stage);
    if (text.starts_with("[MONITOR] Space cambiato") || text.starts_with("[MONITOR] ⚠️ Utente"))
        return lookAtSpace(stage);
    if (text.starts_with("[MONITOR] ") || text.starts_with(pid)) return lookAtBrowser(stage);
    if (text.starts_with("[BLACKOUT] Cambio configurazione")) {
        stage.turnTo("covers are made anew when the displays change");
        stage.waitTo(line.at);
        const bool active = stage.client().blackout.active && !stage.client().blackout.shared;
        if (!stage.claim(Deed::displayChange) || !active) return stage.depart(line.line, "no display has changed now");
        return remakeCovers(stage);
    }
    if (text == "✅ Step 1/4: Fullscreen completato") return completeLockdown(stage);
    if (text == "🔒 Demo Mode: false") return takeJoinResult(stage);
    if (text.starts_with("[BROWSER] Safari PID: ") || text.starts_with("[BROWSER] ❌ Errore: "))
        return nameSafari(stage, line);
    stage.turnTo("every line has its place");
    stage.depart(line.line, "nothing asks for this line");
}

void dispatchText(Stage& stage, const Entry& line) {
    if (line.text.starts_with("errorLabel: \"⚠")) return tapJoin(stage);
    if (line.is("control", "joinButton is disabled")) return tapJoin(stage);
    if (line.text.starts_with("errorLabel: \"⏳")) return tapJoin(stage);
    takeJoinResult(stage);
}

void dispatchRequest(Stage& stage, const Entry& line) {
    if (line.text.find("/api/version/latest") != std::string_view::npos) return checkVersion(stage);
    beat(stage);
}

}  // namespace

void dispatch(Stage& stage) {
    const Entry* const next = stage.peek();
    if (next == nullptr) return;
    const Entry& line = *next;
    if (line.is("log")) return dispatchLog(stage, line);
    if (line.is("setting")) return tapJoin(stage);
    if (line.is("text") || line.is("control")) return dispatchText(stage, line);
    if (line.is("view")) return startNewSession(stage);
    if (line.is("request")) return dispatchRequest(stage, line);
    if (line.is("alert")) return showAlert(stage, line);
    if (line.is("application")) return dueActivation(stage);
    if (line.is("overlay")) return raiseCovers(stage);
    if (line.is("client")) return answerQuit(stage);
    stage.turnTo("every line has its place");
    stage.depart(line.line, "nothing asks for this line");
}

}  // namespace vantrel::simulation
