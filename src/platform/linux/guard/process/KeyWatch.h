#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

/// Watches over a keyboard filter. It sees every key press, whichever window has the keyboard. Some time after one it
/// asks the filter's process whether it still runs, and has the X server close the filter's connection if it does not.
class KeyWatch {
  public:
    /// How long after a key press the question is asked, so that one question serves a burst of keys, and how long the
    /// answer may take.
    static constexpr std::chrono::milliseconds beforeQuestion{250};
    static constexpr std::chrono::milliseconds forAnswer{750};

    /// Null if the X server is missing or does not report raw key presses.
    static std::unique_ptr<KeyWatch> open();

    /// Watches the owner of the X resource: asks it with a '?' on `line` and expects '!'. The owner may ask in the same
    /// way whether the guard still runs. Returns when the line or the X server is gone and when the connection has been
    /// closed.
    void watch(int line, std::uint32_t resource);

  private:
    using Time = std::chrono::steady_clock::time_point;

    KeyWatch(std::unique_ptr<X11Connection> connection, std::uint8_t extension);

    bool takeFrom(int line);
    bool keyWasPressed();
    bool serverWasBusy();
    int untilDue(Time now) const;

    const std::unique_ptr<X11Connection> connection_;
    const std::uint8_t extension_;
    std::optional<Time> pressed_;
    std::optional<Time> asked_;
};

}  // namespace vantrel::linuxdesktop
