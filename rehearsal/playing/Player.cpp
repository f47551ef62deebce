#include "rehearsal/playing/Player.h"

#include <cstdlib>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "app/ApplicationMain.h"
#include "platform/virtual/VirtualMac.h"
#include "rehearsal/playing/Performer.h"
#include "rehearsal/playing/RehearsalNetwork.h"
#include "rehearsal/transcript/EventLines.h"
#include "rehearsal/transcript/Transcript.h"

namespace vantrel::rehearsal {
namespace {

/// What the client did wrong, in the order in which it did. Any thread.
class Misuses {
  public:
    Misuses(Transcript& transcript, std::ostream& stream) : transcript_(transcript), stream_(stream) {}

    void add(double time, std::string what) {
        const std::lock_guard guard(mutex_);
        list_.emplace_back(time, std::move(what));
        // Such a client never comes to an end: a loop that waits under a lock does not wait.
        if (list_.size() >= tooMany) {
            breakOff(time, "the client misuses its platform again and again; the run is broken off");
        }
    }

    /// For a thread that goes on for ever, which nobody could join any more.
    [[noreturn]] void addAndExit(double time) {
        const std::lock_guard guard(mutex_);
        breakOff(time, "a thread of the client does not end; the run is broken off");
    }

    /// False when there is nothing to write.
    bool writeAll() {
        const std::lock_guard guard(mutex_);
        write();
        return !list_.empty();
    }

  private:
    static constexpr std::size_t tooMany = 1'000;

    /// Ends the program as it is, with the transcript written: the client's threads cannot be ended.
    [[noreturn]] void breakOff(double time, std::string what) {
        list_.emplace_back(time, std::move(what));
        write();
        constexpr int misused = 1;
        constexpr int unwritten = 3;
        std::_Exit(stream_.flush() ? misused : unwritten);
    }

    void write() {
        for (const auto& [time, what] : list_) transcript_.add(time, "misuse", what);
    }

    Transcript& transcript_;
    std::ostream& stream_;
    std::mutex mutex_;
    std::vector<std::pair<double, std::string>> list_;
};

/// `onMisuse` may be called on any thread.
virtualmac::Options options(const MacSetup& setup, Transcript& transcript,
                            std::function<void(const std::string&)> onMisuse) {
    virtualmac::Options options;
    options.seed = setup.seed;
    options.calendarStart = setup.calendar;
    options.bundleIdentifier = setup.bundleIdentifier;
    options.settings = setup.settings;
    options.onEvent = [&transcript](const virtualmac::Event& event) { write(event, transcript); };
    options.onMisuse = std::move(onMisuse);
    return options;
}

void install(virtualmac::VirtualMac& mac, InstalledBrowser browser, const Behaviour* behaviour) {
    const auto install = [&](const char* path, virtualmac::InstalledApplication application) {
        if (behaviour != nullptr) behaviour->applyTo(application.application);
        mac.processes().install(path, std::move(application));
    };
    switch (browser) {
        case InstalledBrowser::chrome:
            return install(virtualmac::chromePath, virtualmac::chrome());
        case InstalledBrowser::edge:
            return install(virtualmac::edgePath, virtualmac::edge());
        case InstalledBrowser::firefox:
            return install(virtualmac::firefoxPath, virtualmac::firefox());
    }
}

void setUp(virtualmac::VirtualMac& mac, const MacSetup& setup) {
    mac.screens().setUp({setup.displays, 0, setup.separateSpaces});
    mac.trust().setTrusted(setup.accessibility);
    mac.capture().setStatus(MediaType::audio, setup.microphone);
    mac.capture().setStatus(MediaType::video, setup.camera);
    mac.files().setHomeDirectory(setup.home);
    if (setup.flagDelay) mac.desktop().setFlagDelay(*setup.flagDelay);
    if (setup.fullScreenDuration) mac.desktop().setFullScreenDuration(*setup.fullScreenDuration);
    for (const auto browser : setup.browsers) {
        const auto behaviour = setup.behaviours.find(browser);
        install(mac, browser, behaviour == setup.behaviours.end() ? nullptr : &behaviour->second);
    }
}

std::string state(virtualmac::VirtualMac& mac) {
    if (!mac.isRunning()) return "the client has quit";
    if (const auto alerts = mac.alerts().up(); !alerts.empty()) {
        return "the client waits for an answer to: " + alerts.back().messageText;
    }
    if (mac.menus().isOpen()) return "a menu is open";
    if (mac.leftovers().prompts > 0) return "a permission prompt is up";
    return "the client is running";
}

std::string leftOver(const virtualmac::Leftovers& leftovers) {
    const std::vector<std::pair<const char*, std::size_t>> counts = {{"windows", leftovers.windows},
                                                                     {"visible windows", leftovers.visibleWindows},
                                                                     {"status items", leftovers.statusItems},
                                                                     {"overlays", leftovers.overlays},
                                                                     {"keyboard taps", leftovers.keyboardTaps},
                                                                     {"alerts", leftovers.alerts},
                                                                     {"permission prompts", leftovers.prompts},
                                                                     {"timers", leftovers.timers},
                                                                     {"observers", leftovers.observers},
                                                                     {"pending blocks", leftovers.pendingBlocks},
                                                                     {"background work", leftovers.workers},
                                                                     {"requests", leftovers.requests}};
    std::string text;
    for (const auto& [name, count] : counts) {
        if (count > 0) text += (text.empty() ? "" : ", ") + std::string(name) + " " + std::to_string(count);
    }
    return "left: " + (text.empty() ? "nothing" : text);
}

}  // namespace

bool play(const Scenario& scenario, std::ostream& transcript) {
    return play(scenario, transcript, applicationMain);
}

bool play(const Scenario& scenario, std::ostream& transcript, const Program& program) {
    return playMade(scenario, transcript, [&program](virtualmac::VirtualMac&) { return program; });
}

bool playMade(const Scenario& scenario, std::ostream& stream, const ProgramMaker& make) {
    Transcript transcript(stream);
    Misuses misuses(transcript, stream);
    {
        virtualmac::VirtualMac* self = nullptr;
        virtualmac::VirtualMac mac(options(scenario.mac, transcript, [&misuses, &self](const std::string& what) {
            misuses.add(self != nullptr ? self->now() : 0, what);
        }));
        self = &mac;
        RehearsalNetwork network(scenario.server, [&mac] { return mac.computer().clock.secondsSince1970(); });
        mac.network().setHandler([&network](const URLRequest& request) { return network.answer(request); });
        setUp(mac, scenario.mac);
        const Program program = make(mac);

        Performer performer(mac, network, transcript);
        for (const auto& application : scenario.mac.applications) performer.launch(application);
        mac.launch([&program](const Computer& computer) { program(computer); });
        for (const auto& step : scenario.timeline) {
            mac.runUntil(step.at);
            if (!mac.isRunning()) {
                transcript.add(mac.now(), "ignored", "a step: the client has quit");
                continue;
            }
            performer.perform(step.action);
            for (const auto& action : step.together) performer.perform(action);
        }
        mac.runUntil(scenario.until);
        transcript.add(mac.now(), "end", state(mac), {leftOver(mac.leftovers())});
        // What is under way goes on unheard: a thread that is stuck shows only now, when nothing else can happen any
        // more. Without the network, that is: heartbeats to a slow server would never run out.
        mac.engine().journal.mute();
        mac.network().setHandler(nullptr);
        mac.drain();
        if (!mac.end()) misuses.addAndExit(mac.now());
    }
    return !misuses.writeAll();
}

}  // namespace vantrel::rehearsal
