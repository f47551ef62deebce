#include "tests/simulation/model/acts/Monitor.h"

#include <algorithm>
#include <array>
#include <utility>

#include "tests/simulation/model/acts/End.h"
#include "tests/simulation/model/acts/Fullscreen.h"
#include "tests/simulation/model/reading/Words.h"

namespace vantrel::simulation {
namespace {

constexpr std::array<std::string_view, 17> whitelist{"loginwindow",
                                                     "WindowServer",
                                                     "Dock",
                                                     "SystemUIServer",
                                                     "NotificationCenter",
                                                     "ControlCenter",
                                                     "Spotlight",
                                                     "universalaccessd",
                                                     "CoreLocationAgent",
                                                     "UserNotificationCenter",
                                                     "Vantrel",
                                                     "Sophos Home",
                                                     "SophosUI",
                                                     "Windows App",
                                                     "Creative Cloud",
                                                     "AdobeIPCBroker",
                                                     "AGSService"};

bool isListed(std::string_view name) {
    return std::find(whitelist.begin(), whitelist.end(), name) != whitelist.end();
}

std::string_view identifierOf(std::string_view browser) {
    if (browser == "Google Chrome") return "com.google.Chrome";
    if (browser == "Microsoft Edge") return "com.microsoft.edgemac";
    if (browser == "Safari") return "com.apple.Safari";
    return browser == "Firefox" ? "org.mozilla.firefox" : "";
}

enum class Front { unknown, own, browser, foreign };

Front frontOf(Stage& stage) {
    const World& world = stage.world();
    if (world.front() == 0) return Front::unknown;
    const std::string_view name = world.frontName();
    const auto known = stage.scenario().identifiers.find(name);
    const bool browserName = !identifierOf(name).empty();
    const std::string identifier = known != stage.scenario().identifiers.end() ? known->second
                                   : browserName                               ? std::string(identifierOf(name))
                                                                               : "";
    if (isListed(name) || isListed(identifier) || identifier == stage.scenario().bundleIdentifier) return Front::own;
    const auto& launcher = stage.client().launcher;
    if (launcher != nullptr && !launcher->name.empty() && identifier == identifierOf(launcher->name))
        return Front::browser;
    // What was started by a prelude's step is known by its name alone.
    return stage.scenario().begins && browserName ? Front::unknown : Front::foreign;
}

bool mayBeAlive(Stage& stage) {
    const auto& launcher = stage.client().launcher;
    return launcher != nullptr && launcher->pid && stage.world().mayRun(*launcher->pid, stage.moment());
}

bool isSurelyAlive(Stage& stage) {
    const auto& launcher = stage.client().launcher;
    return launcher != nullptr && launcher->pid && stage.world().surelyRuns(*launcher->pid, stage.moment());
}

std::string nameOf(std::string_view otherwise, const std::shared_ptr<Launcher>& launcher) {
    return launcher == nullptr || launcher->name.empty() ? std::string(otherwise) : launcher->name;
}

void stopAndEnd(Stage& stage, EndCause cause) {
    stage.expectLog("[MONITOR] Monitoraggio fermato");
    stage.client().monitor = {};
    stage.add(
        {.deed = Deed::end, .way = Way::queue, .at = stage.now(), .line = 0, .text = std::string(messageOf(cause))});
}

void readMissing(Stage& stage, const Entry& line) {
    stage.turnTo("a missing browser is looked for eight times, then the session ends");
    Monitor& monitor = stage.client().monitor;
    const auto& launcher = stage.client().launcher;
    if (isSurelyAlive(stage)) return stage.depart(line.line, "the browser runs");
    if (std::exchange(monitor.unsure, false) && line.text.find(" non in esecuzione") != std::string_view::npos)
        monitor.grace = 0;
    if (monitor.grace < 1) {
        stage.expectLog("[MONITOR] " + nameOf("Browser", launcher) + " non in esecuzione — fine sessione");
        return stopAndEnd(stage, EndCause::crashed);
    }
    --monitor.grace;
    const std::string left = "(" + std::to_string(monitor.grace) + " tick rimanenti)";
    if (const Entry* const taken = stage.acceptBeginning("log", "[BROWSER] PID aggiornato: ")) {
        Words words(taken->text.substr(std::string_view("[BROWSER] PID aggiornato: ").size()));
        const auto before = words.integer();
        words.skip(" → ");
        const auto now = words.integer();
        const bool right = before == launcher->pid.value_or(-1) && now && stage.world().mayRun(*now, taken->at) &&
                           words.rest() == " (recupero post-fork)";
        if (!right) return stage.depart(taken->line, "another process is taken over");
        launcher->pid = now;
        launcher->window.reset();
        launcher->applicationKnown = true;
        return stage.expectLog("[MONITOR] PID recuperato per bundle ID durante grace period " + left);
    }
    stage.expectLog("[MONITOR] Browser non trovato — grace period attivo " + left);
}

bool isLarge(const AppWindow& window, const std::vector<Display>& displays) {
    if (window.follows) return true;
    // Against the smallest display: the main one is not known.
    double width = 1440;
    double height = 900;
    for (const Display& display : displays) {
        width = &display == &displays.front() ? display.width : std::min(width, display.width);
        height = &display == &displays.front() ? display.height : std::min(height, display.height);
    }
    return window.width > 0.6 * width && window.height > 0.6 * height;
}

/// Whether any window is there that could be the browser's and large.
bool mayBeVisible(Stage& stage) {
    World& world = stage.world();
    return std::any_of(world.windows().begin(), world.windows().end(), [&](const auto& each) {
        const AppWindow& window = each.second;
        const bool there = !window.closed || window.changed == stage.moment();
        return there && (isLarge(window, world.displays()) || window.changed == stage.moment());
    });
}

bool isSurelyVisible(Stage& stage) {
    const auto& launcher = stage.client().launcher;
    if (launcher == nullptr || !launcher->window || !stage.client().monitor.confirmed || stage.world().bent())
        return false;
    const auto found = stage.world().windows().find(*launcher->window);
    if (found == stage.world().windows().end()) return false;
    const AppWindow& window = found->second;
    const bool none = stage.world().displays().empty();
    double width = none ? 1440 : 0;
    double height = none ? 900 : 0;
    for (const Display& display : stage.world().displays()) {
        width = std::max(width, display.width);
        height = std::max(height, display.height);
    }
    return !window.closed && !window.follows && window.changed < stage.moment() && window.width > 0.6 * width &&
           window.height > 0.6 * height;
}

void readInvisible(Stage& stage, const Entry& line) {
    stage.turnTo("a closed window ends the session on the second look");
    Monitor& monitor = stage.client().monitor;
    if (isSurelyVisible(stage)) return stage.depart(line.line, "the window is visible");
    if (std::exchange(monitor.unsure, false) && line.text.ends_with("(1/6)")) monitor.invisible = 0;
    ++monitor.invisible;
    stage.expectLog("[MONITOR] Finestra non visibile (" + std::to_string(monitor.invisible) + "/6)");
    if (monitor.invisible < 2) return;
    if (stage.accept("log", "[MONITOR] Finestra su altro Space — falso negativo ignorato, reset contatore") !=
        nullptr) {
        monitor.invisible = 0;
        return;
    }
    const std::string how = monitor.confirmed ? "da fullscreen" : "con X";
    stage.expectLog("[MONITOR] Finestra chiusa " + how + " — fine sessione immediata");
    stopAndEnd(stage, EndCause::windowClosed);
}

void enforceAgain(Stage& stage) {
    const auto& launcher = stage.client().launcher;
    if (!acceptActivation(stage, *launcher) && launcher->applicationKnown) {
        stage.departAtNext("the browser is asked to the front");
    }
    stage.add({.deed = Deed::attempt, .way = Way::queue, .at = stage.now() + 500, .launcher = launcher});
}

void readGeometry(Stage& stage) {
    const Entry* const moved = stage.acceptBeginning("log", "[MONITOR] Finestra spostata pos:(");
    const Entry* const resized = stage.acceptBeginning("log", "[MONITOR] Finestra ridimensionata (");
    if (moved == nullptr && resized == nullptr) return;
    stage.turnTo("a window that was moved or resized is put back");
    const auto& launcher = stage.client().launcher;
    const std::string owner = " of process " + std::to_string(launcher->pid.value_or(0)) + ", window #";
    for (const std::string_view attribute : {"AXPosition = ", "AXSize = "}) {
        const Entry* const written = stage.expectBeginning("element", attribute);
        if (written == nullptr) return;
        if (written->text.find(owner) == std::string_view::npos)
            stage.depart(written->line, "not the browser's window");
        Words words(written->text.substr(attribute.size()));
        const double one = words.number().value_or(-1e9);
        words.skip(" ");
        const double other = words.number().value_or(-1e9);
        const bool position = attribute == "AXPosition = ";
        const auto& displays = stage.world().displays();
        const bool known = std::any_of(displays.begin(), displays.end(), [&](const Display& display) {
            return position ? display.x == one && display.y == other : display.width == one && display.height == other;
        });
        if (!known) stage.depart(written->line, "the window gets the main screen's place and size");
    }
    enforceAgain(stage);
}

void readFocus(Stage& stage) {
    const auto& launcher = stage.client().launcher;
    const std::string name = nameOf("browser", launcher);
    const Front front = frontOf(stage);
    std::string_view frontName = stage.world().frontName();
    if (const Entry* const lost = stage.acceptBeginning("log", "[MONITOR] Focus su ")) {
        stage.turnTo("another application in front is a violation");
        const auto said = [&](std::string_view who) {
            return "[MONITOR] Focus su " + std::string(who) + " — riporto " + name + " in primo piano";
        };
        const std::string_view before = stage.world().frontBefore(lost->at);
        if (before != frontName && lost->text == said(before)) {
            // It was in front when the look began.
            frontName = before;
        } else if (front == Front::own || front == Front::browser || lost->text != said(frontName)) {
            return stage.depart(lost->line, "this application is not in front");
        }
        stage.client().heartbeats.pending.push_back({"FOCUS_VIOLATION", frontName, lost->at});
        const bool asked = acceptActivation(stage, *launcher);
        if (!launcher->applicationKnown) return;
        if (!asked) return stage.departAtNext("the browser is asked to the front");
        if (stage.strange()) {
            if (const Entry* const next = stage.peek()) stage.waitTo(next->at);
        }
        return stage.expectLog("[BROWSER] " + name + " portato in primo piano");
    }
    const std::string wrong =
        "[MONITOR] " + std::string(frontName) + " frontmost ma finestra sbagliata — ripristino lockdown";
    const Entry* const window = stage.accept("log", wrong);
    if (window == nullptr) return;
    stage.turnTo("the browser in front with another window is put right");
    if (!stage.client().monitor.confirmed || front == Front::own || front == Front::foreign) {
        return stage.depart(window->line, "the browser is not in front, or full screen was never confirmed");
    }
    enforceAgain(stage);
}

}  // namespace

bool mayLookSilently(Stage& stage) {
    if (!mayBeAlive(stage)) return false;
    const Front front = frontOf(stage);
    return front != Front::foreign && (mayBeVisible(stage) || stage.scenario().begins);
}

void lookAtBrowser(Stage& stage) {
    stage.turnTo("the browser is looked at every 1.5 seconds");
    const Entry line = *stage.peek();
    Monitor& monitor = stage.client().monitor;
    if (!monitor.active) return stage.depart(line.line, "nobody looks at the browser");
    if (stage.isHeld()) return stage.depart(line.line, "timers stand still while an alert or a menu is open");
    if (monitor.ticks.next > line.at && !stage.strange()) return stage.depart(line.line, "no look is due now");
    stage.waitTo(line.at);
    monitor.ticks.fire(line.at);
    const bool missing = line.begins("log", "[BROWSER] PID aggiornato") ||
                         line.begins("log", "[MONITOR] Browser non trovato") ||
                         line.text.find(" non in esecuzione — fine sessione") != std::string_view::npos;
    if (missing) return readMissing(stage, line);
    if (!mayBeAlive(stage) && !stage.strange()) return stage.depart(line.line, "the browser does not run");
    monitor.grace = 0;
    if (line.begins("log", "[MONITOR] Finestra non visibile (")) return readInvisible(stage, line);
    monitor.invisible = 0;
    monitor.unsure = false;
    readGeometry(stage);
    const Entry* const next = stage.peek();
    if (next != nullptr && (next->at == stage.now() || stage.strange())) readFocus(stage);
    if (stage.peek() != nullptr && stage.peek()->line == line.line)
        stage.depart(line.line, "nothing asks for this line");
}

void lookAtSpace(Stage& stage) {
    stage.turnTo("leaving the meeting's Space ends the session");
    const Entry* const line = stage.peek();
    stage.waitTo(line->at);
    const auto due = stage.claim(Deed::spaceLook);
    const Monitor& monitor = stage.client().monitor;
    if (!due) return stage.depart(line->line, "the Space has not changed 0.3 seconds ago");
    if (!monitor.active || !monitor.confirmed) return stage.depart(line->line, "nobody looks at the Space");
    if (stage.accept("log", "[MONITOR] Space cambiato ma Meet è sullo Space corrente — OK") != nullptr) return;
    stage.expectLog("[MONITOR] ⚠️ Utente cambiato a Space diverso da Meet — kill browser e fine sessione");
    stage.backstage().killBegins();
    stopAndEnd(stage, EndCause::windowClosed);
}

}  // namespace vantrel::simulation
