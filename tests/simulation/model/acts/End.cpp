#include "tests/simulation/model/acts/End.h"

#include <optional>
#include <set>

#include "tests/simulation/model/acts/Blackout.h"
#include "tests/simulation/model/acts/Heartbeat.h"
#include "tests/simulation/model/acts/Part.h"
#include "tests/simulation/model/reading/Words.h"

namespace vantrel::simulation {
namespace {

std::string processText(std::int64_t pid, std::string_view what, const World& world) {
    const Process* const process = world.process(pid);
    const std::string name = process != nullptr ? std::string(process->name) : std::string();
    return (name.empty() ? "" : name + " ") + "(" + std::to_string(pid) + ") " + std::string(what);
}

/// The windows that the application shows are closed, those in full screen after half a second.
void closeWindows(Stage& stage, const Launcher& launcher) {
    const std::string owner = " of process " + std::to_string(*launcher.pid) + ", window #";
    const std::string left = "AXFullScreen = false" + owner;
    const std::string pressed = "AXPress" + owner;
    std::set<std::int64_t> closed;
    std::optional<std::int64_t> taken;  // out of full screen, and still to be closed
    while (!stage.departed()) {
        const Entry* const leaves = stage.acceptBeginning("element", left);
        const Entry* const presses = leaves != nullptr ? nullptr : stage.acceptBeginning("element", pressed);
        const Entry* const entry = leaves != nullptr ? leaves : presses;
        const bool excused = stage.world().bent() || stage.strange() || stage.client().trusted != true;
        // The kill beside it may have ended the browser meanwhile.
        const bool runs = stage.world().surelyRuns(*launcher.pid, stage.now());
        const bool gone = taken && stage.world().windows().at(*taken).closed;
        if (entry == nullptr && taken && runs && !excused && !gone)
            stage.departAtNext("a window that was taken out of full screen is closed");
        if (entry == nullptr) return;
        const auto number = Words(entry->text.substr(leaves != nullptr ? left.size() : pressed.size())).integer();
        const auto& windows = stage.world().windows();
        if (!number || windows.find(*number) == windows.end()) stage.depart(entry->line, "there is no such window");
        if (taken && taken != number && !excused && !gone) stage.depart(entry->line, "another window");
        if (presses != nullptr && !closed.insert(number.value_or(0)).second) stage.depart(entry->line, "it was closed");
        taken = leaves != nullptr ? number : std::nullopt;
        if (leaves != nullptr) stage.waitTo(stage.now() + 500);
    }
}

/// Whether the wait for the browser's end may be over at that moment: it is looked for every 0.2 seconds, for 2
/// seconds. A look that falls upon the very end may be the last one or not.
bool isLook(std::int64_t begun, std::int64_t at) {
    return (at - begun) % 200 == 0 && at - begun <= 2200;
}

void quitBrowser(Stage& stage, Launcher& launcher) {
    World& world = stage.world();
    const std::int64_t begun = stage.now();
    const std::int64_t pid = *launcher.pid;
    if (launcher.applicationKnown) {
        const std::string asked = processText(pid, "is asked to quit", world);
        const bool sent = stage.accept("application", asked) != nullptr ||
                          stage.accept("application", asked + ": no such process") != nullptr;
        if (!sent && !launcher.unsure) stage.departAtNext("expected: application " + asked);
        launcher.applicationKnown = sent;
        launcher.unsure = false;
    }
    const Entry* next = stage.peek();
    while (next != nullptr && partOf(*next) == Part::turn) {
        stage.turns().push_back(next);
        stage.skip();
        next = stage.peek();
    }
    if (next == nullptr) return stage.giveUp();
    const bool gone = !world.mayRun(pid, next->at - 1);
    if (!stage.strange() && !isLook(begun, next->at)) {
        stage.depart(next->line, "the browser is looked for every 0.2 s, for 2 s");
    }
    stage.waitTo(next->at);
    const bool forced = next->at - begun >= 2000 && launcher.applicationKnown && !gone;
    const Process* const process = world.process(pid);
    if (!forced && launcher.applicationKnown && !gone) stage.depart(next->line, "the browser still runs");
    if (!launcher.applicationKnown && next->at - begun < 2000 && !stage.strange()) {
        stage.depart(next->line, "a browser that is known by its number alone is waited for");
    }
    if (launcher.applicationKnown && gone && process != nullptr && next->at - process->changed > 200 &&
        process->changed >= begun && !stage.strange()) {
        stage.depart(next->line, "the wait for the browser goes on though it has ended");
    }
    if (forced) {
        const std::string killed = processText(pid, "is killed", world);
        if (stage.accept("application", killed) == nullptr) stage.expect("application", killed + ": no such process");
    }
}

void closeBrowser(Stage& stage) {
    Launcher& launcher = *stage.client().launcher;
    const std::string name = launcher.name.empty() ? "browser" : launcher.name;
    std::erase_if(stage.dues(),
                  [&](const Due& due) { return due.deed == Deed::retry && due.launcher == stage.client().launcher; });
    launcher.confirmed = false;
    if (launcher.preExisting) {
        stage.expectLog("[BROWSER] Chiudo finestra lockdown (" + name + " pre-existing, processo non killato)");
        closeWindows(stage, launcher);
    } else {
        stage.expectLog("[BROWSER] Kill " + name);
        if (!stage.departed()) quitBrowser(stage, launcher);
    }
    stage.expectLog("[SESSION] Browser terminato");
    launcher.pid.reset();
    launcher.applicationKnown = false;
}

void endBrowser(Stage& stage) {
    const auto& launcher = stage.client().launcher;
    if (launcher == nullptr || !launcher->pid) return;
    World& world = stage.world();
    if (!world.mayRun(*launcher->pid, stage.now())) return;
    const Entry* const next = stage.peek();
    const bool closes = next != nullptr && next->at == stage.now() &&
                        (next->begins("log", "[BROWSER] Kill ") || next->begins("log", "[BROWSER] Chiudo finestra "));
    if (closes || world.surelyRuns(*launcher->pid, stage.now())) closeBrowser(stage);
}

void releaseKeys(Stage& stage) {
    Client& client = stage.client();
    if (!client.hook) return;
    // One that is lost may have been taken away already.
    if (client.tap && !client.tapLost) {
        stage.expect("tap", "is removed");
    } else {
        stage.accept("tap", "is removed");
    }
    client.tap = client.tapLost = false;
    stage.expectLog("[HOOK] Hook tastiera disattivato");
    client.hook = false;
}

void showEnd(Stage& stage, std::string_view message) {
    Client& client = stage.client();
    if (client.statusItem) stage.expect("status item", "is removed: 🔒 Vantrel");
    client.statusItem = false;
    if (!client.closable) stage.expect("window", "Vantrel has the style titled, closable, miniaturizable");
    client.closable = true;
    const bool shown = client.visible;
    if (!shown) stage.expect("window", "Vantrel is shown");
    client.visible = true;
    // One that is in front already is not told of.
    if (stage.accept("window", "Vantrel is in front") == nullptr && !shown)
        stage.departAtNext("expected: window Vantrel is in front");
    stage.expect("client", "asks to come to the front");
    const std::string quoted = "endMessageLabel: \"" + std::string(message) + "\"";
    if (client.endMessage != message) stage.expect("text", quoted);
    client.endMessage = message;
    if (client.joinShown) stage.expect("view", "joinView is hidden");
    if (!client.endShown) stage.expect("view", "endView is shown");
    client.joinShown = false;
    client.endShown = true;
    stage.expectLog("[SESSION] Schermata fine visibile, join hidden: true, end hidden: false");
}

}  // namespace

std::string_view messageOf(EndCause cause) {
    switch (cause) {
        case EndCause::windowClosed:
            return "La finestra di Meet è stata chiusa";
        case EndCause::crashed:
            return "Il browser si è chiuso inaspettatamente";
        case EndCause::user:
            break;
    }
    return "Sessione terminata dall'utente";
}

void endSession(Stage& stage, EndCause cause) {
    stage.turnTo("the end routine is complete and in order");
    Client& client = stage.client();
    stage.expectLog("[SESSION] Fine sessione: " + std::string(messageOf(cause)));
    client.inLockdown = false;
    client.complete = false;
    stage.beBusy(true);
    releaseKeys(stage);
    if (client.monitor.active) stage.expectLog("[MONITOR] Monitoraggio fermato");
    client.monitor = {};
    endBlackout(stage);
    endBrowser(stage);
    stage.turnTo("one notice for each end, with its cause's message");
    sendNotice(stage, messageOf(cause));
    stage.turnTo("the end routine is complete and in order");
    if (client.launcher != nullptr) client.launcher->dropped = true;
    client.launcher.reset();
    client.heartbeats = {};
    showEnd(stage, messageOf(cause));
    stage.beBusy(false);
}

void dueEnd(Stage& stage) {
    const Entry* const line = stage.peek();
    stage.turnTo("one end for each lockdown, with its cause's message");
    if (!stage.client().inLockdown) return stage.depart(line->line, "no lockdown stands");
    stage.waitTo(line->at);
    for (const EndCause cause : {EndCause::windowClosed, EndCause::crashed, EndCause::user}) {
        if (line->text.substr(std::string_view("[SESSION] Fine sessione: ").size()) != messageOf(cause)) continue;
        for (Due& due : stage.dues()) {
            if (due.deed != Deed::end || due.text != messageOf(cause)) continue;
            if (due.at != line->at && !stage.strange()) continue;
            due.text.clear();
            return endSession(stage, cause);
        }
    }
    stage.depart(line->line, "nothing has ended the session with this message now");
}

}  // namespace vantrel::simulation
