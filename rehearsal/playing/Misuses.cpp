#include "rehearsal/playing/Misuses.h"

#include <cstdlib>
#include <utility>

namespace vantrel::rehearsal {

void Misuses::add(double time, std::string what) {
    constexpr std::size_t tooMany = 1'000;
    const std::lock_guard guard(mutex_);
    list_.emplace_back(time, std::move(what));
    // Such a client never comes to an end: a loop that waits under a lock does not wait.
    if (list_.size() >= tooMany) {
        breakOff(time, "the client misuses its platform again and again; the run is broken off");
    }
}

void Misuses::addAndExit(double time, std::string what) {
    const std::lock_guard guard(mutex_);
    breakOff(time, std::move(what));
}

bool Misuses::writeAll() {
    const std::lock_guard guard(mutex_);
    write();
    return !list_.empty();
}

void Misuses::breakOff(double time, std::string what) {
    list_.emplace_back(time, std::move(what));
    // In the middle of a prelude nothing of it has been written yet.
    transcript_.addLines(transcript_.takeHeld());
    write();
    constexpr int misused = 1;
    constexpr int unwritten = 3;
    std::_Exit(stream_.flush() ? misused : unwritten);
}

void Misuses::write() {
    for (const auto& [time, what] : list_) transcript_.add(time, "misuse", what);
}

}  // namespace vantrel::rehearsal
