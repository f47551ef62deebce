// The launch of the browser and its kill, each on a thread of its own.
#include <algorithm>
#include <array>

#include "tests/simulation/model/acts/Background.h"
#include "tests/simulation/model/acts/JoinScreen.h"
#include "tests/simulation/model/reading/Words.h"

namespace vantrel::simulation {
namespace {

// The search for the window. A look that falls upon the very end of it may still come.
constexpr std::int64_t longest = 12000;
constexpr std::int64_t pause = 400;

constexpr std::array<std::string_view, 7> chromiumArguments{
    "argument: --new-window",         "argument: --no-first-run",      "argument: --no-default-browser-check",
    "argument: --disable-extensions", "argument: --disable-tab-strip", "argument: --disable-session-crashed-bubble",
    "argument: --disable-infobars"};

std::string meetingAddress(const std::string& link) {
    return link.starts_with("http") ? link : "https://meet.google.com/" + link;
}

std::string pathOf(std::string_view browser) {
    const std::string name(browser);
    return "/Applications/" + name + ".app/Contents/MacOS/" + name;
}

bool isOneOf(std::string_view name) {
    return name == "Google Chrome" || name == "Microsoft Edge" || name == "Safari" || name == "Firefox";
}

}  // namespace

void Background::launchBegins(int prompts) {
    // A launch that outlived its lockdown and a new one cannot be told apart.
    if (launch_ != LaunchStep::none) return stage_.giveUp();
    prompts_ = prompts;
    launcher_ = stage_.client().launcher;
    meeting_ = meetingAddress(stage_.client().session.link);
    launch_ = prompts == 0 ? LaunchStep::reset : LaunchStep::prompts;
    launchAt_ = launchBegunAt_ = stage_.now();
    safariAsked_ = false;
}

void Background::seePermission(const Entry& entry) {
    Client& client = stage_.client();
    stage_.turnTo("the answers to camera and microphone are logged, and the browser is launched after both");
    const bool microphone = entry.begins("permission", "microphone ");
    if (microphone || entry.begins("permission", "camera ")) {
        constexpr std::string_view set = " is set to ";
        const std::size_t at = entry.text.find(set);
        std::optional<std::string>& status = microphone ? client.microphone : client.camera;
        if (at != entry.text.npos) {
            status = std::string(entry.text.substr(at + set.size()));
        } else if (entry.text.ends_with(" is granted") || entry.text.ends_with(" is refused")) {
            const bool granted = entry.text.ends_with(" is granted");
            status = granted ? "granted" : "refused";
            const std::string_view said =
                microphone ? (granted ? "[TCC] Microfono: ✅ concesso" : "[TCC] Microfono: ⚠️ negato")
                           : (granted ? "[TCC] Camera: ✅ concessa" : "[TCC] Camera: ⚠️ negata");
            answers_.push_back(said);
            answeredAt_ = entry.at;
        }
        return;
    }
    if (!entry.is("log")) return;
    const auto answer = std::find(answers_.begin(), answers_.end(), entry.text);
    if (answer == answers_.end() || answeredAt_ != entry.at)
        return stage_.depart(entry.line, "nobody has answered so now");
    answers_.erase(answer);
    if (launch_ != LaunchStep::prompts || --prompts_ > 0) return;
    launch_ = client.inLockdown && client.launcher == launcher_ ? LaunchStep::reset : LaunchStep::none;
    // It goes on from the main queue.
    launchAt_ = launchBegunAt_ = std::max(entry.at, stage_.world().hangsUntil());
}

void Background::launchIsOver(std::int64_t at, bool attempts) {
    launch_ = LaunchStep::none;
    const auto add = [&](Deed deed) {
        stage_.add({.deed = deed, .way = Way::queue, .at = at, .line = 0, .launcher = launcher_});
    };
    if (attempts) add(safariAsked_ ? Deed::bringSafari : Deed::firstAttempt);
    if (!launcher_->dropped) add(Deed::completion);
}

void Background::seeLaunch(const Entry& entry) {
    stage_.turnTo("the browser is launched in its order");
    if (entry.begins("application", "") || entry.is("process")) return seeStart(entry);
    seeLaunchLog(entry);
}

void Background::seeLaunchLog(const Entry& entry) {
    const std::string_view text = entry.text;
    const auto wrong = [&](const char* why) { stage_.depart(entry.line, why); };
    const bool settles = launch_ == LaunchStep::settle || launch_ == LaunchStep::window;
    if (!settles && entry.at != launchAt_) return wrong("the launch is not at work now");
    switch (launch_) {
        case LaunchStep::reset:
            if (text != "[BROWSER] Reset stato per nuova sessione") return wrong("a launch begins with a reset");
            launch_ = LaunchStep::address;
            return;
        case LaunchStep::address:
            if (text != "[BROWSER] URL Meet: " + meeting_) return wrong("another meeting");
            launch_ = LaunchStep::browser;
            return;
        case LaunchStep::browser: {
            constexpr std::string_view chosen = "[BROWSER] Browser selezionato: ";
            if (!text.starts_with(chosen) || !isOneOf(text.substr(chosen.size()))) return wrong("no browser is chosen");
            launcher_->name = text.substr(chosen.size());
            launch_ = LaunchStep::windows;
            return;
        }
        case LaunchStep::windows: {
            constexpr std::string_view counted = "[BROWSER] Finestre prima: ";
            const auto count = text.starts_with(counted) ? integerOf(text.substr(counted.size())) : std::nullopt;
            if (!count || *count < 0) return wrong("the windows are counted");
            // Where no application has ever shown one there is the client's alone.
            const World& world = stage_.world();
            const bool alone =
                !stage_.scenario().begins && world.windows().empty() && !world.bent() && !stage_.isHeld();
            if (alone && *count != (stage_.client().visible ? 1 : 0)) return wrong("there are other windows");
            const bool workspace = launcher_->name == "Safari" || launcher_->name == "Firefox";
            launch_ = workspace ? LaunchStep::open : LaunchStep::route;
            // An address that is none is not opened, and the next step comes at once.
            if (workspace && (!isPlainAddress(meeting_) || stage_.world().failsAddresses())) {
                stage_.add({.deed = Deed::completion, .way = Way::queue, .at = entry.at, .sure = false});
            }
            return;
        }
        case LaunchStep::route:
            return seeRoute(entry);
        case LaunchStep::start:
            if (!text.starts_with("[BROWSER] ❌ Errore lancio: ")) return wrong("a process is started");
            return launchIsOver(entry.at, false);
        case LaunchStep::settle:
            return settleProcess(entry);
        case LaunchStep::window:
            return seeNewWindow(entry);
        default:
            return wrong("no browser is launched now");
    }
}

void Background::seeRoute(const Entry& entry) {
    const std::string_view text = entry.text;
    if (text == "[BROWSER] ❌ Eseguibile non trovato per " + launcher_->name) return launchIsOver(entry.at, false);
    constexpr std::string_view before = "[BROWSER] Chrome già in esecuzione, PID pre-launch: ";
    if (text.starts_with(before) && !launcher_->preExisting) {
        const auto pid = integerOf(text.substr(before.size()));
        if (!pid || !stage_.world().mayRun(*pid, entry.at)) return stage_.depart(entry.line, "no such browser runs");
        launcher_->preExisting = true;
        before_ = *pid;
        return;
    }
    const std::string said = "[BROWSER] Lancio " + launcher_->name + " con args: --app=" + meeting_ + " --new-window";
    if (text != said) return stage_.depart(entry.line, "expected: " + said);
    launch_ = LaunchStep::start;
}

void Background::seeStart(const Entry& entry) {
    const auto wrong = [&](const char* why) { stage_.depart(entry.line, why); };
    NamedProcess named;
    if (entry.is("application")) {
        const std::string asked = "file:///Applications/Safari.app is asked to open " + meeting_;
        if (launch_ != LaunchStep::open || entry.at != launchAt_ || entry.text != asked)
            return wrong("nothing asks Safari now");
        launch_ = LaunchStep::window;
        std::erase_if(stage_.dues(), [](const Due& due) { return due.deed == Deed::completion && !due.sure; });
        safariAsked_ = true;
        return;
    }
    const bool started = readNamedProcess(entry.text, named);
    const bool bySystem = started && named.name == pathOf("Safari") && entry.further.size() == 1;
    if (bySystem && entry.further[0] == "argument: " + meeting_) return;
    if (launch_ != LaunchStep::start || !started || entry.at != launchAt_) return wrong("no process is started now");
    if (named.name != pathOf(launcher_->name) && !named.name.ends_with("/" + pathOf(launcher_->name).substr(1))) {
        return wrong("another program");
    }
    const bool right = entry.further.size() == 8 && entry.further[0] == "argument: --app=" + meeting_ &&
                       std::equal(chromiumArguments.begin(), chromiumArguments.end(), entry.further.begin() + 1);
    if (!right) return wrong("other arguments");
    startedPid_ = named.pid;
    launch_ = LaunchStep::settle;
    launchAt_ = entry.at + 2000;
}

void Background::settleProcess(const Entry& entry) {
    const std::string how = launcher_->preExisting ? "pre-existing" : "new";
    const std::string said = "[BROWSER] " + launcher_->name + " PID (";
    Words words(entry.text);
    if (!words.skip(said)) return stage_.depart(entry.line, "the process is settled");
    const bool fallback = !launcher_->preExisting && words.skip("fallback): ");
    if (!fallback && !words.skip(how + "): ")) return stage_.depart(entry.line, "it is known in another way");
    const auto pid = words.integer();
    const World& world = stage_.world();
    if (entry.at != launchAt_) return stage_.depart(entry.line, "the process is settled 2 seconds after its start");
    if (!pid || !words.atEnd()) return stage_.depart(entry.line, "a process has a number");
    if (launcher_->preExisting && *pid != before_) return stage_.depart(entry.line, "another process");
    if (fallback && *pid != startedPid_) return stage_.depart(entry.line, "another process");
    if (how == "new" && !fallback && !world.mayRun(*pid, entry.at)) return stage_.depart(entry.line, "it does not run");
    const Process* const started = world.process(startedPid_);
    const bool idle = started != nullptr && !started->application && !started->exited;
    if (how == "new" && !fallback && *pid != startedPid_ && idle) return stage_.depart(entry.line, "another process");
    if (!launcher_->dropped) {
        launcher_->pid = pid;
        launcher_->applicationKnown = !fallback || world.mayRun(*pid, entry.at);
        // While the client hangs, applications that start are not known; nor is one that ends in this moment.
        const bool hangs = entry.at < world.hangsUntil();
        launcher_->unsure = fallback && launcher_->applicationKnown && (hangs || !world.surelyRuns(*pid, entry.at));
    }
    launchIsOver(entry.at + 1000, true);
}

void Background::seeNewWindow(const Entry& entry) {
    const std::int64_t waited = entry.at - launchAt_;
    const bool lid = stage_.world().lidClosed() > 0;
    Words words(entry.text);
    if (words.skip("[BROWSER] ⚠ Finestra non trovata entro timeout")) {
        if (waited != longest && waited != longest + pause && !lid)
            stage_.depart(entry.line, "the window is looked for for 12 seconds");
        return launchIsOver(entry.at + 3000, true);
    }
    if (!words.skip("[BROWSER] Nuova finestra #")) return stage_.depart(entry.line, "the new window is looked for");
    const auto number = words.integer();
    const auto title = words.skip(": '") ? words.upTo("' pid=") : std::nullopt;
    const auto pid = words.integer();
    const auto& windows = stage_.world().windows();
    const auto found = number ? windows.find(*number) : windows.end();
    if (waited % pause != 0 || waited > longest + pause)
        return stage_.depart(entry.line, "the window is looked for every 0.4 seconds");
    if (!title || !pid || found == windows.end()) return stage_.depart(entry.line, "there is no such window");
    if (found->second.closed && found->second.changed < entry.at)
        return stage_.depart(entry.line, "that window is closed");
    if (!launcher_->dropped) {
        launcher_->window = number;
        if (!launcher_->pid) launcher_->pid = pid;
    }
    launchIsOver(entry.at + 3000, true);
}

void Background::endLaunch(std::int64_t at, std::int64_t next) {
    stage_.turnTo("the browser is launched in its order");
    if (!answers_.empty()) stage_.depart(0, "the answer to a permission prompt is logged");
    const bool loose = launcher_ != nullptr && launcher_->dropped;
    switch (launch_) {
        case LaunchStep::reset:
            // It begins from the main queue, which a hang has held up in the midst of other work.
            if (launchAt_ <= at && (stage_.blocks(Way::queue) || stage_.world().hangsUntil() > launchBegunAt_)) {
                launchAt_ = next;
                break;
            }
            [[fallthrough]];
        case LaunchStep::address:
        case LaunchStep::browser:
        case LaunchStep::windows:
        case LaunchStep::route:
        case LaunchStep::start:
            if (loose) launch_ = LaunchStep::none;
            if (!loose && launchAt_ <= at) stage_.depart(0, "the launch stops at " + std::to_string(launchAt_) + " ms");
            break;
        case LaunchStep::open:
            if (launchAt_ <= at && !loose && isPlainAddress(meeting_) && !stage_.world().failsAddresses())
                stage_.depart(0, "Safari has to be asked");
            if (launchAt_ <= at) launch_ = LaunchStep::none;
            break;
        case LaunchStep::settle:
            if (loose && launchAt_ < next) launch_ = LaunchStep::none;
            if (!loose && launchAt_ < next) stage_.depart(0, "the process has to be settled");
            break;
        case LaunchStep::window:
            if (loose && launchAt_ + longest + pause < next) launch_ = LaunchStep::none;
            if (!loose && launchAt_ + longest + pause < next && stage_.world().lidClosed() == 0) {
                stage_.depart(0, "the search for the window has to end");
            }
            break;
        default:
            break;
    }
    stage_.turnTo("a browser whose meeting was left is killed");
    // A monitor that is released before its kill begins takes it along.
    if (kill_ == KillStep::cancel && stage_.client().launcher == nullptr) kill_ = KillStep::none;
    const bool stopped = kill_ != KillStep::none && kill_ != KillStep::confirm && killAt_ <= at;
    if (stopped) stage_.depart(0, "the kill stops half way");
    if (kill_ == KillStep::confirm && killAt_ + 1600 < next) stage_.depart(0, "the kill has to be confirmed");
}

void Background::killBegins() {
    const auto& launcher = stage_.client().launcher;
    kill_ = KillStep::cancel;
    killSeen_ = false;
    killAt_ = stage_.now();
    killPid_ = launcher != nullptr ? launcher->pid.value_or(0) : 0;
}

bool Background::claims(const Entry& entry) const {
    const std::string killed = "(" + std::to_string(killPid_) + ") is killed";
    return kill_ == KillStep::look && !killSeen_ && entry.is("application") &&
           entry.text.find(killed) != std::string_view::npos;
}

void Background::seeKilled(const Entry& entry, const std::string& said) {
    if (entry.is("application")) {
        killSeen_ = true;
        return;
    }
    const bool worked = entry.text == said + "✅ OK";
    const bool failed = entry.text == said + "⚠️ forceTerminate fallito, fallback SIGKILL";
    const bool missing = entry.text == said + "NSRunningApplication non trovato, SIGKILL diretto";
    if (!worked && !failed && !missing) return stage_.depart(entry.line, "another kill");
    if (killSeen_ == missing) return stage_.depart(entry.line, "this is not how it was killed");
    kill_ = worked ? KillStep::confirm : KillStep::signal;
}

void Background::seeKill(const Entry& entry) {
    stage_.turnTo("a browser whose meeting was left is killed");
    const std::string pid = std::to_string(killPid_);
    const std::string_view text = entry.text;
    if (kill_ != KillStep::confirm && entry.at != killAt_) return stage_.depart(entry.line, "nothing is killed now");
    if (kill_ == KillStep::cancel) {
        // The end may have given the browser back already.
        if (text == "[MONITOR] Kill browser: PID non disponibile") {
            kill_ = KillStep::none;
            return;
        }
        if (text != "[BROWSER] Fullscreen retry timer cancellato")
            return stage_.depart(entry.line, "the tries are cancelled first");
        kill_ = KillStep::look;
        return;
    }
    if (kill_ == KillStep::look) return seeKilled(entry, "[MONITOR] Kill browser PID " + pid + ": ");
    if (kill_ == KillStep::signal) {
        const std::string signal = "(" + pid + ") is sent signal 9";
        if (text != signal && text != signal + ": no such process")
            return stage_.depart(entry.line, "signal 9 is sent");
        kill_ = KillStep::confirm;
        return;
    }
    if (kill_ != KillStep::confirm) return stage_.depart(entry.line, "nothing is killed now");
    if (text != "[MONITOR] Kill browser: processo " + pid + " confermato terminato")
        return stage_.depart(entry.line, "another process");
    const std::int64_t waited = entry.at - killAt_;
    if (waited % 100 != 0 || waited > 1600)
        stage_.depart(entry.line, "the process is looked for every 0.1 seconds, for 1.5");
    const Process* const process = stage_.world().process(killPid_);
    const bool runs = process != nullptr && !process->exited;
    if (runs && waited < 1500) stage_.depart(entry.line, "it still runs");
    kill_ = KillStep::none;
}

}  // namespace vantrel::simulation
