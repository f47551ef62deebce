#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/linux/guard/Guards.h"

namespace vantrel::linuxdesktop {

/// The guards as a keyboard filter sees them. They ask after key presses whether the filter's thread still runs; one
/// that is gone is replaced while the keys continue. One thread at a time.
class KeyGuards {
  public:
    using Clock = std::chrono::steady_clock;

    /// How long the keys go on while no guard watches.
    static constexpr std::chrono::seconds withoutAny{3};
    /// How long a new guard may take until it watches while the other one does, and when one is tried again.
    static constexpr std::chrono::seconds untilTheNextTry{5};

    KeyGuards(std::shared_ptr<Guards> guards, std::uint32_t resource);

    /// Waits a few seconds at most. False if no guard watches by then.
    bool waitUntilReady();

    /// Readable when a guard asks or is gone; -1 for one that is not there.
    std::array<int, Guards::count> descriptors() const;
    /// When to call attend() even if nothing is readable.
    std::optional<Clock::time_point> due() const;

    /// Answers the guards and replaces those that are gone. False if none has watched for too long.
    bool attend(Clock::time_point now);

    /// Why a guard has given the keyboard back by ending the filter's connection. A guard says so before it does.
    enum class Taken { no, clientStopped, filterSilent };
    Taken taken() const { return taken_; }

  private:
    struct One {
        Guards::KeyLine line;
        bool watches = false;
        Clock::time_point asked;
    };

    void open(std::size_t guard);
    void takenBecause(std::string_view bytes);
    void attend(std::size_t guard, Clock::time_point now);
    bool anyIsOpen() const;
    bool anyWatches() const;

    const std::shared_ptr<Guards> guards_;
    const std::uint32_t resource_;
    std::array<One, Guards::count> all_;
    std::optional<Clock::time_point> unwatchedSince_;
    Taken taken_ = Taken::no;
};

}  // namespace vantrel::linuxdesktop
