#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/virtual/journal/Event.h"
#include "platform/virtual/scheduler/ChoiceSource.h"

namespace vantrel::virtualmac {

/// The options of a new virtual Mac.
struct Options {
    /// Orders what is due at the same moment. 0 is the natural order, in which no thread is interrupted.
    std::uint64_t seed = 0;
    /// Instead of the seed, if it is set.
    std::shared_ptr<ChoiceSource> choices;
    /// Real threads without a baton, for ThreadSanitizer. The seed then replays nothing.
    bool freeRunning = false;
    /// The calendar at uptime 0, in seconds since 1970: 2026-03-02T08:00:00Z.
    double calendarStart = 1772438400;
    /// The major version of its macOS: 13 or later. From 14 on, activation is cooperative (world/Activations.h), and
    /// the macOS platform over stand-ins takes other branches.
    int systemVersion = 14;
    /// The main bundle's.
    std::optional<std::string> bundleIdentifier;
    /// Called on misuse of the platform: an interface used off the main thread, a wait under a lock, a deadlock. Runs
    /// on the faulty thread. Without it, misuse is printed on standard error and the process aborts.
    std::function<void(const std::string&)> onMisuse;
    /// Instead of onMisuse, if it is set: called on use of an interface off the main thread.
    std::function<void(const std::string&)> onWrongThread;
    EventSink onEvent;
    /// The user defaults before the first launch.
    std::map<std::string, std::string> settings;
    /// Whether it is misuse to destroy the Mac with an alert shown, a menu open or a thread stuck.
    bool reportLeftovers = false;
};

}  // namespace vantrel::virtualmac
