#include "rehearsal/playing/Player.h"

#include <atomic>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "app/ApplicationMain.h"
#include "platform/virtual/VirtualMac.h"
#include "rehearsal/playing/EndEntry.h"
#include "rehearsal/playing/FirstDifference.h"
#include "rehearsal/playing/MacSettings.h"
#include "rehearsal/playing/Misuses.h"
#include "rehearsal/playing/Performer.h"
#include "rehearsal/playing/RehearsalNetwork.h"
#include "rehearsal/transcript/EventLines.h"
#include "rehearsal/transcript/Transcript.h"

namespace vantrel::rehearsal {
namespace {

using Reporting = std::function<void(const std::string&)>;

/// The last two may be called on any thread.
virtualmac::Options macOptions(const MacSetup& setup, const PlayOptions& play, Transcript& transcript,
                               Reporting onMisuse, Reporting onWrongThread) {
    virtualmac::Options options;
    options.seed = setup.seed;
    options.choices = play.choices;
    options.systemVersion = setup.macOS;
    options.calendarStart = setup.calendar;
    options.bundleIdentifier = setup.bundleIdentifier;
    options.settings = setup.settings;
    options.onEvent = [&transcript](const virtualmac::Event& event) { write(event, transcript); };
    options.onMisuse = std::move(onMisuse);
    options.onWrongThread = std::move(onWrongThread);
    return options;
}

ProgramMaker maker(const PlayOptions& options) {
    if (options.make) return options.make;
    return [program = options.program ? options.program : applicationMain](virtualmac::VirtualMac&) { return program; };
}

/// A scenario on its Mac.
class Playing {
  public:
    Playing(const Scenario& scenario, Transcript& transcript, Misuses& misuses, const PlayOptions& options)
        : transcript_(transcript),
          misuses_(misuses),
          mac_(macOptions(
              scenario.mac, options, transcript, [this](const std::string& what) { misuses_.add(time(), what); },
              [this](const std::string& what) { misuses_.addAndExit(time(), what); })),
          network_(scenario.server, [this] { return mac_.computer().clock.secondsSince1970(); }),
          performer_(mac_, network_, transcript) {
        isMade_ = true;
        mac_.network().setHandler([this](const URLRequest& request) { return network_.answer(request); });
        setUp(mac_, scenario.mac);
        program_ = maker(options)(mac_);
        for (const auto& application : scenario.mac.applications) performer_.launch(application);
        mac_.launch([this](const Computer& computer) { program_(computer); });
    }

    /// Returns the difference from the kept transcript.
    std::string play(const Prelude& prelude, bool whole) {
        transcript_.hold();
        play(prelude.timeline, prelude.until);
        const auto part = transcript_.takeHeld();
        std::string difference;
        if (prelude.keptTranscript) difference = firstDifference(*prelude.keptTranscript, part + endEntry());
        if (whole) transcript_.addLines(part);
        transcript_.add(mac_.now(), "prelude", prelude.name);
        network_.apply(prelude.server);
        apply(mac_, prelude.mac);
        for (const auto& application : prelude.mac.applications) performer_.launch(application);
        return difference;
    }

    void play(const std::vector<Step>& timeline, double until) {
        for (const auto& step : timeline) {
            mac_.runUntil(step.at);
            if (!mac_.isRunning()) {
                transcript_.add(mac_.now(), "ignored", "a step: the client has quit");
                continue;
            }
            performer_.perform(step.action);
            for (const auto& action : step.together) performer_.perform(action);
        }
        mac_.runUntil(until);
    }

    void end() {
        writeEnd(mac_, transcript_);
        // Work under way continues without events: a stuck thread shows only now, when nothing else can happen. The
        // network is cut off, because heartbeats to a slow server would never run out.
        mac_.engine().journal.mute();
        mac_.network().setHandler(nullptr);
        mac_.drain();
        if (!mac_.end()) {
            misuses_.addAndExit(mac_.now(), "a thread of the client does not end; the run is broken off");
        }
    }

    bool hasExited() const { return mac_.hasExited(); }

  private:
    /// Any thread.
    double time() const { return isMade_ ? mac_.now() : 0; }

    /// The end of the prelude's own transcript.
    std::string endEntry() {
        std::ostringstream text;
        Transcript entry(text);
        writeEnd(mac_, entry);
        return text.str();
    }

    Transcript& transcript_;
    Misuses& misuses_;
    std::atomic<bool> isMade_ = false;
    virtualmac::VirtualMac mac_;
    RehearsalNetwork network_;
    Program program_;
    Performer performer_;
};

}  // namespace

PlayResult play(const Scenario& scenario, std::ostream& stream, const PlayOptions& options) {
    PlayResult result;
    Transcript transcript(stream);
    Misuses misuses(transcript, stream);
    auto playing = std::make_unique<Playing>(scenario, transcript, misuses, options);
    if (scenario.prelude) result.preludeDifference = playing->play(*scenario.prelude, options.whole);
    playing->play(scenario.timeline, scenario.until);
    playing->end();
    // The stack of a main thread that has stopped in exit() refers to its Mac, so both stay until the program ends.
    if (playing->hasExited()) static_cast<void>(playing.release());
    playing.reset();
    result.clean = !misuses.writeAll();
    return result;
}

}  // namespace vantrel::rehearsal
