#include "tests/simulation/model/acts/Background.h"

#include <algorithm>
#include <utility>

#include "tests/simulation/model/acts/BlockedKey.h"
#include "tests/simulation/model/acts/Heartbeat.h"
#include "tests/simulation/model/acts/JoinScreen.h"
#include "tests/simulation/model/acts/Monitor.h"
#include "tests/simulation/model/reading/Words.h"

namespace vantrel::simulation {
namespace {

/// The value in "ID: "VALUE"".
std::string_view quotedValue(std::string_view text) {
    const std::size_t begins = text.find(": \"");
    if (begins == text.npos || text.size() < begins + 4) return {};
    return text.substr(begins + 3, text.size() - begins - 4);
}

/// "presses the key KEY, N times": N.
int timesIn(std::string_view text) {
    const std::size_t comma = text.find(", ");
    return comma == text.npos ? 1 : static_cast<int>(Words(text.substr(comma + 2)).integer().value_or(1));
}

}  // namespace

void Background::object(std::string_view rule, std::size_t line, std::string why) {
    stage_.turnTo(rule);
    stage_.depart(line, std::move(why));
}

void Background::see(const Entry& entry) {
    Part part = partOf(entry);
    if (part == Part::main) part = Part::world;
    const Monitor& monitor = stage_.client().monitor;
    if (part == Part::completion) seeCompletion(entry);
    if (part == Part::join) seeJoin(entry);
    if (part == Part::launch) seeLaunch(entry);
    const bool signal = entry.is("process") && entry.text.find(") is sent signal ") != std::string_view::npos;
    if (part == Part::kill || signal || claims(entry)) seeKill(entry);
    if (part == Part::permission) seePermission(entry);
    if (part == Part::tap) seeTap(entry);
    if (part == Part::world) {
        const bool ignored = !entry.further.empty() && entry.further.back().starts_with("ignored: ");
        if (entry.is("participant") && !ignored) seeParticipant(entry);
        if (entry.is("reply")) seeReply(entry);
        if (entry.is("key")) seeKey(entry);
        if (entry.is("end")) seeEnd(entry);
        seeSystem(entry);
    }
    if (monitor.active && monitor.ticks.next <= entry.at) looked_ = looked_ || mayLookSilently(stage_);
}

void Background::seeParticipant(const Entry& entry) {
    Client& client = stage_.client();
    std::string text(entry.text);
    for (const std::string_view line : entry.further) text += "\n" + std::string(line);
    for (auto [id, field] : {std::pair{"types into serverUrlField", &client.server},
                             {"types into sessionCodeField", &client.code},
                             {"types into fullNameField", &client.name},
                             {"types into emailField", &client.email}}) {
        if (text.starts_with(id)) *field = quotedValue(text);
    }
    const bool once = text.starts_with("presses the key ") && text.find(", ") == std::string::npos;
    if (once && !stage_.strange() && !client.tapLost) ++pressedKeys_;
    if (text.starts_with("presses the key ")) allowedKeys_ += once ? 1 : timesIn(text);
    // A key equivalent goes through the tap, too.
    if (text.starts_with("presses Command-") || text == "presses Return") ++allowedKeys_;
    const Entry* const following = stage_.following(entry);
    const bool answers = text == "presses Return" && following != nullptr && following->is("answer");
    if (text == "presses Avvia sessione protetta" || text == "presses joinButton" ||
        (text == "presses Return" && !answers)) {
        // What is shown already is not told of again.
        const std::string_view missing = missingField(client);
        const bool sure = missing.empty() || client.error != missing;
        stage_.add({.deed = Deed::joinTap, .way = Way::event, .at = entry.at, .line = entry.line, .sure = sure});
    }
    if (text == "presses Nuova sessione" || text == "presses newSessionButton") {
        stage_.add({.deed = Deed::newSession, .way = Way::event, .at = entry.at, .line = entry.line});
    }
}

void Background::seeSystem(const Entry& entry) {
    Client& client = stage_.client();
    if (entry.is("client", "is asked to quit")) {
        stage_.add({.deed = Deed::quitAnswer, .way = Way::event, .at = entry.at, .line = entry.line});
    } else if (entry.is("displays", "are now")) {
        for (int count = 0; count < notices_; ++count) {
            stage_.add({.deed = Deed::displayChange,
                        .way = Way::queue,
                        .at = entry.at + count * noticesEvery_,
                        .line = entry.line});
        }
    } else if (entry.begins("displays", "changes are noticed ")) {
        Words words(entry.text.substr(std::string_view("changes are noticed ").size()));
        notices_ = static_cast<int>(words.integer().value_or(1));
        words.skip(" times, every ");
        noticesEvery_ = static_cast<std::int64_t>(words.number().value_or(0) * 1000 + 0.5);
    } else if (entry.is("space")) {
        const bool sure = client.monitor.active && client.monitor.confirmed && client.launcher != nullptr &&
                          client.launcher->confirmedAt < entry.at;
        stage_.add({.deed = Deed::spaceNotice, .way = Way::queue, .at = entry.at, .line = entry.line, .sure = sure});
    } else if (entry.is("prelude")) {
        seePrelude();
    } else if (entry.is("window") && entry.text.ends_with("is closed by the participant")) {
        client.visible = false;
    } else if (entry.is("permission", "accessibility is granted")) {
        client.trusted = true;
        client.trustedAt = entry.at;
    } else if (entry.is("permission", "accessibility is refused")) {
        client.trusted = false;
        client.trustedAt = entry.at;
        client.tapLost = client.tap;
    } else if (entry.begins("server", "replies")) {
        repliesChange_ = true;
    } else if (entry.is("keyboard")) {
        secureInput_ = entry.text == "a password field takes it";
    } else if (entry.is("tap", "is removed") && tries_) {
        tries_ = false;
    } else if (entry.is("tap", "is removed") || entry.begins("tap", "is disabled")) {
        const bool untouched = client.tap && !client.tapLost && client.trusted == true;
        if (untouched && entry.is("tap", "is removed") && !stage_.strange()) {
            stage_.turnTo("no tap goes while the permission stands");
            stage_.depart(entry.line, "nothing takes it away");
        }
        client.tap = client.tapLost = false;
    } else if (entry.is("tap")) {
        // Whether a tap would be given; one that is not tells that the client's is lost.
        tries_ = entry.text == "is installed";
        client.tapLost = client.tapLost || (!tries_ && client.tap);
    } else if (entry.is("permission")) {
        seePermission(entry);
    }
}

void Background::seePrelude() {
    Client& client = stage_.client();
    const Scenario& scenario = stage_.scenario();
    if (scenario.accessibility) client.trusted = *scenario.accessibility == "granted";
    client.tapLost = client.tapLost || (client.tap && client.trusted == false);
    if (scenario.microphone) client.microphone = scenario.microphone;
    if (scenario.camera) client.camera = scenario.camera;
}

void Background::seeTap(const Entry& entry) {
    constexpr std::string_view log = "[HOOK] 🚫 Bloccato: ";
    blocked_ = entry.text.substr(std::min(log.size(), entry.text.size()));
    blockedLine_ = entry.line;
    if (!stage_.client().tap) return object("keys are swallowed by a tap alone", entry.line, "there is no tap");
    Heartbeats& heartbeats = stage_.client().heartbeats;
    if (heartbeats.exist) heartbeats.pending.push_back({"KEY_BLOCKED", blocked_, entry.at});
}

void Background::seeKey(const Entry& entry) {
    const std::string_view swallowed = " is swallowed";
    const bool gone = entry.text.ends_with(swallowed);
    const std::string_view key = entry.text.substr(0, entry.text.find(' '));
    const std::string_view name = blockedName(key);
    if (key == "return" && !gone) {
        stage_.add({.deed = Deed::joinTap, .way = Way::event, .at = entry.at, .line = entry.line, .sure = false});
    }
    stage_.turnTo("exactly the keys that would leave the meeting are swallowed, by their names");
    if (gone && (blocked_.empty() || blocked_ != name)) stage_.depart(entry.line, "the log does not say so");
    if (!gone && !blocked_.empty()) stage_.depart(entry.line, "it was told of as swallowed");
    if (!gone && !name.empty() && stage_.client().tap && !stage_.client().tapLost && !stage_.strange() &&
        !secureInput_) {
        stage_.depart(entry.line, "it would leave the meeting");
    }
    constexpr std::string_view reaches = " reaches ";
    const std::size_t reached = entry.text.rfind(reaches);
    const std::string_view whom = reached == entry.text.npos ? "" : entry.text.substr(reached + reaches.size());
    const World& world = stage_.world();
    constexpr std::string_view own = "Vantrel";
    const bool known = world.front() != 0 && world.frontName() != own && whom != own && whom != "the system";
    if (!whom.empty() && known && whom != world.frontName() && whom != world.frontBefore(entry.at))
        stage_.depart(entry.line, "it reaches another application than the one in front");
    if (allowedKeys_-- == 0) stage_.depart(entry.line, "nobody has pressed it");
    blocked_ = {};
    if (pressedKeys_ > 0) --pressedKeys_;
}

void Background::seeEnd(const Entry& entry) {
    const Client& client = stage_.client();
    stage_.turnTo("the run ends as the client stands");
    if (client.quit != (entry.text == "the client has quit"))
        return stage_.depart(entry.line, "it has quit, or has not");
    const bool waits = entry.text.starts_with("the client waits for an answer to: ") || entry.text == "a menu is open";
    if (!client.quit && waits != stage_.isHeld())
        return stage_.depart(entry.line, "an alert or a menu is open, or is not");
    if (entry.further.size() != 1 || stage_.strange() || client.tapLost || client.quit) return;
    const auto counted = [&](std::string_view what) {
        const std::string_view left = entry.further[0];
        const std::size_t at = left.find(what);
        return at == left.npos
                   ? 0
                   : static_cast<int>(
                         integerOf(
                             Words(left.substr(at + what.size())).upTo(",").value_or(left.substr(at + what.size())))
                             .value_or(-1));
    };
    const int watching = client.monitor.active ? 1 : 0;
    const int covering = client.blackout.active && !client.blackout.shared ? 1 : 0;
    const int retries = static_cast<int>(std::count_if(stage_.dues().begin(), stage_.dues().end(), [](const Due& due) {
        return due.deed == Deed::retry && !due.launcher->dropped;
    }));
    const bool right = counted(" status items ") == (client.statusItem ? 1 : 0) &&
                       counted(" keyboard taps ") == (client.tap ? 1 : 0) &&
                       counted(" overlays ") == static_cast<int>(client.blackout.covers.size()) &&
                       counted(" observers ") == watching + covering &&
                       counted(" timers ") == watching + covering + (client.heartbeats.running ? 1 : 0) + retries;
    if (!right) stage_.depart(entry.line, "something else is left");
}

// Whether what is due may pass without a line.
bool Background::mayComeToNothing(const Due& due) {
    const Client& client = stage_.client();
    const Launcher* const launcher = due.launcher.get();
    switch (due.deed) {
        case Deed::joinTap:
            return !due.sure || (!missingField(client).empty() && client.error == missingField(client));
        case Deed::end:
            return !client.inLockdown || due.text.empty();
        case Deed::versionCheck:
            return !isPlainAddress(client.server) && !client.server.empty();
        case Deed::firstAttempt:
            return launcher->dropped;
        case Deed::attempt:
            return !due.sure || launcher->confirmed || (launcher->dropped && !due.strong);
        case Deed::retry:
            return launcher->dropped || !launcher->applicationKnown || launcher->unsure || due.silent ||
                   client.givenBackAt == due.at;
        case Deed::bringSafari:
            return launcher->dropped || !launcher->applicationKnown || !due.sure || client.givenBackAt == due.at;
        case Deed::completion:
            return !client.inLockdown || !due.sure;
        case Deed::displayChange:
            return !due.sure || !client.blackout.active || client.blackout.shared;
        case Deed::spaceLook: {
            if (!due.sure || !client.monitor.active || stage_.world().bent() || client.launcher == nullptr) return true;
            const auto window = client.launcher->window;
            const auto found = window ? stage_.world().windows().find(*window) : stage_.world().windows().end();
            if (found == stage_.world().windows().end() || found->second.closed) return true;
            return found->second.width <= 200 || found->second.height <= 100;
        }
        case Deed::spaceNotice:
            return true;
        case Deed::joinResult:
            return due.note == "*" || !due.sure;
        default:
            return false;
    }
}

void Background::comeToNothing(const Due& due) {
    if (due.deed == Deed::spaceNotice) {
        stage_.add(
            {.deed = Deed::spaceLook, .way = Way::queue, .at = due.at + 300, .line = due.line, .sure = due.sure});
    }
    const bool asks = due.deed == Deed::retry || due.deed == Deed::bringSafari;
    if (!asks || due.launcher->dropped) return;
    if (std::exchange(due.launcher->unsure, false)) due.launcher->applicationKnown = false;
    stage_.add({.deed = Deed::attempt,
                .way = Way::queue,
                .at = due.at + 500,
                .sure = due.sure || due.deed == Deed::bringSafari,
                .launcher = due.launcher,
                .strong = due.deed == Deed::bringSafari});
}

/// A try that is due in the moment in which the timers begin to be held up may have begun before.
void Background::perhapsTry(std::size_t index, std::int64_t at) {
    Due& due = stage_.dues()[index];
    const bool perhaps = due.deed == Deed::retry && due.at == at && due.sure && !due.launcher->dropped;
    if (!perhaps || !mayComeToNothing(due)) return;
    due.sure = false;
    const auto launcher = due.launcher;
    stage_.add({.deed = Deed::attempt, .way = Way::queue, .at = at + 500, .sure = false, .launcher = launcher});
}

/// Also where lines were read ahead, in a strange time, past a menu that has opened.
bool Background::areTimersHeld() const {
    const auto& turns = stage_.turns();
    return stage_.isHeld() ||
           std::any_of(turns.begin(), turns.end(), [](const Entry* turn) { return turn->begins("menu", "opened: "); });
}

void Background::momentEnds(std::int64_t at, std::int64_t next) {
    if (stage_.client().quit) return stage_.dues().clear();
    if (std::exchange(pressedKeys_, 0) > 0 && !stage_.strange() && !stage_.client().tapLost) {
        object("each key that is pressed is swallowed or reaches somebody", 0,
               "one is lost at " + std::to_string(at) + " ms");
    }
    if (!std::exchange(blocked_, {}).empty())
        object("each key that is pressed is swallowed or reaches somebody", blockedLine_, "it is not");
    endThreads(at, next);
    endDues(at, next);
    endLooks(at, next);
    endBeats(at, next);
}

void Background::endDues(std::int64_t at, std::int64_t next) {
    auto& dues = stage_.dues();
    // What a strange time has held up or swallowed is not missed.
    const bool strange = stage_.strange();
    if (std::exchange(wasStrange_, strange) && !strange)
        std::erase_if(dues, [&](const Due& due) { return due.at < at && !stage_.blocks(due.way); });
    for (std::size_t index = 0; index < dues.size() && !stage_.departed();) {
        // Nothing is done while the client hangs; a notice may have come before.
        const bool hangs = stage_.world().hangsUntil() >= next && dues[index].deed != Deed::spaceNotice;
        const bool waits = strange && (hangs || dues[index].deed == Deed::spaceLook || !mayComeToNothing(dues[index]));
        if (stage_.isHeld() && stage_.heldSince() == at) perhapsTry(index, at);
        const bool held = stage_.blocks(dues[index].way) || (dues[index].way == Way::timer && areTimersHeld());
        if (dues[index].at >= next || held || waits) {
            dues[index].sure = dues[index].sure && !(waits && dues[index].deed == Deed::spaceLook);
            ++index;
            continue;
        }
        const Due due = dues[index];
        dues.erase(dues.begin() + static_cast<std::ptrdiff_t>(index));
        if (mayComeToNothing(due)) {
            comeToNothing(due);
        } else {
            object("what is due is done at its time", due.line,
                   "it was due at " + std::to_string(due.at) + " ms: " + std::string(nameOf(due.deed)));
        }
    }
}

void Background::endLooks(std::int64_t at, std::int64_t next) {
    Monitor& monitor = stage_.client().monitor;
    bool asked = std::exchange(looked_, false);
    if (stage_.isHeld() && monitor.ticks.next <= at && stage_.heldSince() == at) {
        lookedBefore_ = lookedBefore_ || asked;
        monitor.unsure = monitor.unsure || asked;
    }
    if (!monitor.active || areTimersHeld() || stage_.isBusy() || stage_.departed()) return;
    asked = std::exchange(lookedBefore_, false) || asked;
    const bool strange = stage_.strange();
    while (monitor.ticks.next <= at || monitor.ticks.next < next) {
        const bool late = monitor.ticks.next <= at;
        const bool silent = mayLookSilently(stage_) || (late && asked);
        if (!silent && !strange) {
            return object("the browser is looked at every 1.5 seconds", 0,
                          "the look due at " + std::to_string(monitor.ticks.next) + " ms has to say something");
        }
        // One that had something to say has not been held yet.
        if (silent && !strange) monitor.grace = monitor.invisible = 0;
        monitor.unsure = strange && (silent || monitor.unsure);
        if (late) {
            monitor.ticks.fire(at);
        } else {
            monitor.ticks.next += monitor.ticks.period;
        }
    }
    if (monitor.ticks.next == next) looked_ = mayLookSilently(stage_);
}

void Background::endBeats(std::int64_t at, std::int64_t next) {
    Heartbeats& heartbeats = stage_.client().heartbeats;
    Blackout& blackout = stage_.client().blackout;
    if (stage_.isHeld() && stage_.heldSince() == at && heartbeats.running && heartbeats.beats.next <= at)
        perhapsBeat(stage_);
    if (areTimersHeld() || stage_.isBusy()) return;
    while (blackout.raises.on && blackout.raises.next < next) blackout.raises.next += blackout.raises.period;
    if (!heartbeats.running || heartbeats.beats.next >= next || stage_.departed()) return;
    if (stage_.strange() || stage_.world().failsRequests()) {
        const std::int64_t slack = stage_.strange() ? 1000 : 0;
        // One that comes due while the client hangs waits for the end of it.
        const auto due = [&] {
            const std::int64_t hangs = stage_.world().hangsUntil();
            const std::int64_t free = std::max(heartbeats.beats.next, stage_.freeSince());
            return heartbeats.beats.next <= hangs ? std::max(free, hangs) : free;
        };
        while (due() < next - slack) {
            loseViolations(stage_, due());
            heartbeats.beats.next += heartbeats.beats.period;
        }
        return;
    }
    object("a heartbeat goes out every 15 seconds", 0,
           "none has gone out at " + std::to_string(heartbeats.beats.next) + " ms");
}

}  // namespace vantrel::simulation
