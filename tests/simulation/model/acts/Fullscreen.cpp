#include "tests/simulation/model/acts/Fullscreen.h"

#include <algorithm>

#include "tests/simulation/model/reading/Words.h"

namespace vantrel::simulation {
namespace {

constexpr int mostTries = 8;

void confirm(Stage& stage, Launcher& launcher) {
    launcher.confirmed = true;
    launcher.confirmedAt = stage.now();
    if (!launcher.watched || launcher.dropped) return;
    stage.expectLog("[MONITOR] Fullscreen confermato");
    stage.client().monitor.confirmed = true;
}

/// Whether a try that is due now may have begun before this line: nobody is asked to the front where nobody is known.
bool mayHaveBegun(const Stage& stage, const Due& due) {
    return due.at <= stage.now() && !due.launcher->applicationKnown && !stage.blocks(Way::timer);
}

void scheduleRetry(Stage& stage, const std::shared_ptr<Launcher>& launcher) {
    bool begun = false;
    std::erase_if(stage.dues(), [&](const Due& due) {
        const bool pending = due.deed == Deed::retry && due.launcher == launcher;
        begun = begun || (pending && mayHaveBegun(stage, due));
        return pending;
    });
    if (begun) {
        stage.add(
            {.deed = Deed::attempt, .way = Way::queue, .at = stage.now() + 500, .sure = false, .launcher = launcher});
    }
    stage.add({.deed = Deed::retry, .way = Way::timer, .at = stage.now() + 2000, .launcher = launcher});
}

/// The size is written although the position was refused.
void maximise(Stage& stage, const std::string& where) {
    const Entry* const position = stage.expectBeginning("element", "AXPosition = ");
    const Entry* const size = stage.expectBeginning("element", "AXSize = ");
    if (position == nullptr || size == nullptr) return;
    for (const Entry* const entry : {position, size}) {
        if (entry->text.find(where) == std::string_view::npos) stage.depart(entry->line, "another window is maximised");
    }
    Words place(position->text.substr(std::string_view("AXPosition = ").size()));
    Words extent(size->text.substr(std::string_view("AXSize = ").size()));
    const double x = place.number().value_or(-1e9);
    place.skip(" ");
    const double y = place.number().value_or(-1e9);
    const double width = extent.number().value_or(-1);
    extent.skip(" ");
    const double height = extent.number().value_or(-1);
    bool known = x == 0 && y == 0 && width == 1440 && height == 900 && stage.world().displays().empty();
    for (const Display& display : stage.world().displays()) {
        known = known || (display.x == x && display.y == y && display.width == width && display.height == height);
    }
    if (!known) stage.depart(size->line, "the window is stretched over the main screen");
}

bool acceptRequest(Stage& stage, std::int64_t pid) {
    const Process* const process = stage.world().process(pid);
    std::string text = process != nullptr && !process->name.empty() ? std::string(process->name) + " " : "";
    text += "(" + std::to_string(pid) + ") is asked to come to the front";
    if (stage.accept("application", text) != nullptr) return true;
    return stage.accept("application", text + ": no such process") != nullptr;
}

}  // namespace

bool acceptActivation(Stage& stage, Launcher& launcher) {
    if (!launcher.applicationKnown || !launcher.pid) return false;
    const bool asked = acceptRequest(stage, *launcher.pid);
    if (launcher.unsure) launcher.applicationKnown = asked;
    launcher.unsure = false;
    return asked;
}

bool acceptFrontGivenBack(Stage& stage, const Launcher* launcher) {
    const std::int64_t other = stage.world().lastOther();
    const std::int64_t before = stage.client().questionOver;
    const auto accept = [&](std::int64_t pid) {
        if (pid == 0 || !acceptRequest(stage, pid)) return false;
        if (launcher != nullptr && pid == launcher->pid) stage.client().givenBackAt = stage.now();
        return true;
    };
    const bool known = other != 0 && before != 0;
    const bool runs = launcher != nullptr && launcher->applicationKnown;
    if (!known && runs && accept(launcher->pid.value_or(0))) return true;
    return accept(other) || (before != other && accept(before));
}

void passOverSafari(Stage& stage, const std::shared_ptr<Launcher>& launcher) {
    for (Due& due : stage.dues()) {
        const bool passed = due.deed == Deed::bringSafari && due.launcher == launcher && due.at <= stage.now() &&
                            (!launcher->applicationKnown || !due.sure || stage.client().givenBackAt == stage.now());
        if (!passed) continue;
        due = {.deed = Deed::attempt, .way = Way::queue, .at = stage.now() + 500, .launcher = launcher, .strong = true};
    }
}

void attemptFullscreen(Stage& stage, const std::shared_ptr<Launcher>& launcher) {
    stage.turnTo("full screen is tried eight times, 2.5 seconds apart");
    if (launcher->tries >= mostTries) {
        stage.expectLog("[FULLSCREEN] Max retry raggiunti — rimango massimizzato");
        return confirm(stage, *launcher);
    }
    ++launcher->tries;
    stage.expectLog("[FULLSCREEN] Tentativo " + std::to_string(launcher->tries) + "/8...");
    if (!launcher->pid || stage.departed()) return;
    if (stage.strange()) {
        if (const Entry* const next = stage.peek()) stage.waitTo(next->at);
    }
    if (stage.accept("log", "[FULLSCREEN] Nessuna finestra AX — riprovo tra 2s") != nullptr) {
        return scheduleRetry(stage, launcher);
    }
    if (stage.accept("log", "[FULLSCREEN] ✅ Già in fullscreen") != nullptr) return confirm(stage, *launcher);
    const std::string owner = " of process " + std::to_string(*launcher->pid) + ", window #";
    const Entry* const set = stage.expectBeginning("element", "AXFullScreen = true" + owner);
    if (set == nullptr) return;
    Words words(set->text.substr(std::string_view("AXFullScreen = true").size() + owner.size()));
    launcher->window = words.integer();
    const auto& windows = stage.world().windows();
    if (!launcher->window || windows.find(*launcher->window) == windows.end()) {
        return stage.depart(set->line, "there is no such window");
    }
    if (!words.skip(": error ")) {
        stage.expectLog("[FULLSCREEN] ✅ Fullscreen attivato via AX");
        return confirm(stage, *launcher);
    }
    stage.expectLog("[FULLSCREEN] AX fallito (code: " + std::string(words.rest()) + ") — riprovo tra 2s");
    maximise(stage, owner + std::to_string(launcher->window.value_or(0)));
    scheduleRetry(stage, launcher);
}

namespace {

/// In strange times: a try that has asked nobody to the front, and whose attempt has waited since.
std::optional<Due> claimSilentTry(Stage& stage) {
    if (!stage.strange()) return std::nullopt;
    auto& dues = stage.dues();
    const auto found = std::find_if(dues.begin(), dues.end(), [&](const Due& due) {
        const bool silent = due.deed == Deed::retry && !due.launcher->applicationKnown;
        return silent && due.at + 500 <= stage.now();
    });
    if (found == dues.end()) return std::nullopt;
    Due due = *found;
    dues.erase(found);
    return due;
}

}  // namespace

void dueAttempt(Stage& stage) {
    stage.turnTo("full screen is tried at its times");
    const Entry* const line = stage.peek();
    stage.waitTo(line->at);
    while (true) {
        auto due = stage.claim(Deed::firstAttempt);
        const bool first = due.has_value();
        if (!due) due = stage.claim(Deed::attempt);
        if (!due) due = claimSilentTry(stage);
        if (!due) return stage.depart(line->line, "no attempt is due now");
        Launcher& launcher = *due->launcher;
        if (launcher.dropped && !due->strong) continue;
        if (first) {
            launcher.tries = 0;
            launcher.confirmed = false;
        }
        if (launcher.confirmed) continue;
        return attemptFullscreen(stage, due->launcher);
    }
}

void dueActivation(Stage& stage) {
    stage.turnTo("the browser is asked to the front before an attempt");
    const Entry* const line = stage.peek();
    stage.waitTo(line->at);
    for (const Deed deed : {Deed::bringSafari, Deed::retry}) {
        while (auto due = stage.claim(deed)) {
            if (due->launcher->dropped && !due->strong) continue;
            const bool strong = deed == Deed::bringSafari;
            stage.add({.deed = Deed::attempt,
                       .way = Way::queue,
                       .at = line->at + 500,
                       .launcher = due->launcher,
                       .strong = strong});
            if (acceptActivation(stage, *due->launcher)) return;
        }
    }
    // After the question of the status menu the platform gives the front back, again where the system has ignored it.
    constexpr std::int64_t givenBack = 5000;
    const auto& launcher = stage.client().launcher;
    const bool question = line->at - stage.client().questionClosedAt <= givenBack;
    const bool behind = launcher != nullptr || !stage.client().visible;
    if (question && behind && acceptFrontGivenBack(stage, launcher.get())) return;
    stage.depart(line->line, "nothing asks the browser to the front now");
}

}  // namespace vantrel::simulation
