#include "platform/linux/keyboard/LinuxKeyboardTap.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>

#include "platform/linux/threads/MainThread.h"

namespace vantrel::linuxdesktop {

LinuxKeyboardTap::LinuxKeyboardTap(Dependencies dependencies, MainThread& mainThread, KeyDecision decision,
                                   KeyReport report)
    : mainThread_(mainThread),
      decision_(decision),
      report_(std::make_shared<const KeyReport>(std::move(report))),
      weakReport_(report_),
      dependencies_(std::move(dependencies)),
      pulse_([&mainThread](Block block) { mainThread.post(std::move(block)); }),
      thread_([this] { run(); }) {}

LinuxKeyboardTap::~LinuxKeyboardTap() {
    eventfd_write(dependencies_.stop.get(), 1);
    thread_.join();
}

void LinuxKeyboardTap::run() {
    while (serve()) wait();
    if (stopped_) {
        dependencies_.filter->release([this](const KeyEvent& event) { return swallows(event); });
    } else {
        KeyEvent disabled;
        disabled.type = KeyEventType::tapDisabledByTimeout;
        decision_(disabled);
        dependencies_.filter->release([](const KeyEvent&) { return false; });
    }
    dependencies_.filter.reset();
    dependencies_.guard.reset();
}

// False if the tap must end: it was stopped, its connection was closed, the main thread does not answer, or no guard is
// available.
bool LinuxKeyboardTap::serve() {
    const bool connected = dependencies_.filter->answer([this](const KeyEvent& event) { return swallows(event); });
    if (!connected || pulse_.isOverdue(KeyboardFilter::Clock::now())) return false;
    eventfd_t stop = 0;
    stopped_ = eventfd_read(dependencies_.stop.get(), &stop) == 0;
    if (stopped_) return false;
    return isGuarded();
}

// Replaces a guard that is gone or does not answer. Keys continue meanwhile. If the new one does not watch in time, no
// guard is available.
bool LinuxKeyboardTap::isGuarded() {
    if (dependencies_.guard->attend(KeyboardGuard::Clock::now())) return true;
    if (!dependencies_.guard->hasWatched()) return false;
    dependencies_.guard = KeyboardGuard::start(dependencies_.guardExecutable, dependencies_.filter->resource());
    return dependencies_.guard != nullptr;
}

void LinuxKeyboardTap::wait() {
    constexpr int forEver = -1;
    int milliseconds = forEver;
    for (const auto& due : {dependencies_.filter->due(), pulse_.due(), dependencies_.guard->due()}) {
        if (!due) continue;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*due - KeyboardFilter::Clock::now()).count();
        const int wait = static_cast<int>(std::max<decltype(left)>(left, 0));
        milliseconds = milliseconds == forEver ? wait : std::min(milliseconds, wait);
    }
    std::array<pollfd, 3> sources{pollfd{dependencies_.filter->descriptor(), POLLIN, 0},
                                  pollfd{dependencies_.guard->descriptor(), POLLIN, 0},
                                  pollfd{dependencies_.stop.get(), POLLIN, 0}};
    poll(sources.data(), sources.size(), milliseconds);
}

bool LinuxKeyboardTap::swallows(const KeyEvent& event) {
    const auto now = KeyboardFilter::Clock::now();
    if (pulse_.isOverdue(now)) return false;
    pulse_.ask(now);
    dependencies_.guard->keyWasPressed(now);
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
