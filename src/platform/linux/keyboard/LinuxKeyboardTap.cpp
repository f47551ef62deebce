#include "platform/linux/keyboard/LinuxKeyboardTap.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>

#include "platform/linux/threads/LinuxClock.h"
#include "platform/linux/threads/MainThread.h"
#include "platform/portable/LostTap.h"
#include "platform/portable/UTCDateFormatter.h"

namespace vantrel::linuxdesktop {

LinuxKeyboardTap::LinuxKeyboardTap(Dependencies dependencies, MainThread& mainThread, KeyDecision decision,
                                   KeyReport report)
    : mainThread_(mainThread),
      decision_(decision),
      report_(std::make_shared<const KeyReport>(std::move(report))),
      weakReport_(report_),
      dependencies_(std::move(dependencies)),
      pulse_([&mainThread](Block block) { mainThread.post(std::move(block)); },
             [this] { return mainThreadsWait_.total(); }),
      thread_([this] { run(); }) {}

LinuxKeyboardTap::~LinuxKeyboardTap() {
    eventfd_write(dependencies_.stop.get(), 1);
    thread_.join();
}

void LinuxKeyboardTap::run() {
    std::optional<End> end;
    while (!(end = serve())) wait();
    if (*end == End::stopped) {
        dependencies_.filter->release([this](const KeyEvent& event) { return swallows(event); });
    } else {
        KeyEvent disabled;
        disabled.type = KeyEventType::tapDisabledByTimeout;
        decision_(disabled);
        dependencies_.filter->release([](const KeyEvent&) { return false; });
        say(*end);
    }
    dependencies_.filter.reset();
    dependencies_.guards.reset();
}

void LinuxKeyboardTap::say(End lost) {
    const std::string moment = UTCDateFormatter().string(LinuxClock().secondsSince1970());
    if (lost == End::mainThreadIsLate) return sayThatTheTapIsLost(moment, "the main thread did not answer in time");
    if (lost == End::unguarded) return sayThatTheTapIsLost(moment, "no process watches over it any more");
    sayThatTheTapIsLost(moment, whyDisconnected());
}

// Both guards may have done it. The lines still hold what they said.
std::string_view LinuxKeyboardTap::whyDisconnected() {
    dependencies_.guards->attend(KeyGuards::Clock::now());
    switch (dependencies_.guards->taken()) {
        case KeyGuards::Taken::clientStopped:
            return "the client was stopped, and a guard has given the keyboard back";
        case KeyGuards::Taken::filterSilent:
            return "a key was not decided in time, and a guard has given the keyboard back";
        case KeyGuards::Taken::no:
            break;
    }
    return "the connection to the X server has ended";
}

// Empty while the tap goes on.
std::optional<LinuxKeyboardTap::End> LinuxKeyboardTap::serve() {
    if (!dependencies_.filter->answer([this](const KeyEvent& event) { return swallows(event); })) {
        return End::disconnected;
    }
    const auto now = KeyboardFilter::Clock::now();
    if (pulse_.isOverdue(now)) return End::mainThreadIsLate;
    // Only now, so that no key waits for it.
    if (std::exchange(wasKeyPressed_, false)) pulse_.ask(now);
    eventfd_t stop = 0;
    if (eventfd_read(dependencies_.stop.get(), &stop) == 0) return End::stopped;
    if (!dependencies_.guards->attend(KeyGuards::Clock::now())) return End::unguarded;
    return std::nullopt;
}

void LinuxKeyboardTap::wait() {
    constexpr int forEver = -1;
    int milliseconds = forEver;
    for (const auto& due : {dependencies_.filter->due(), pulse_.due(), dependencies_.guards->due()}) {
        if (!due) continue;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*due - KeyboardFilter::Clock::now()).count();
        const int wait = static_cast<int>(std::max<decltype(left)>(left, 0));
        milliseconds = milliseconds == forEver ? wait : std::min(milliseconds, wait);
    }
    std::array<pollfd, 2 + Guards::count> sources{pollfd{dependencies_.filter->descriptor(), POLLIN, 0},
                                                  pollfd{dependencies_.stop.get(), POLLIN, 0}};
    const auto lines = dependencies_.guards->descriptors();
    std::transform(lines.begin(), lines.end(), sources.begin() + 2, [](int line) { return pollfd{line, POLLIN, 0}; });
    poll(sources.data(), sources.size(), milliseconds);
}

bool LinuxKeyboardTap::swallows(const KeyEvent& event) {
    if (pulse_.isOverdue(KeyboardFilter::Clock::now())) return false;
    wasKeyPressed_ = true;
    const std::string_view name = decision_(event);
    if (name.empty()) return false;
    report(name);
    return true;
}

void LinuxKeyboardTap::report(std::string_view name) {
    mainThread_.post([weak = weakReport_, name = std::string(name)] {
        const auto report = weak.lock();
        if (report && *report) (*report)(name);
    });
}

}  // namespace vantrel::linuxdesktop
