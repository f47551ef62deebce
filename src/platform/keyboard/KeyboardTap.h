#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

namespace vantrel {

/// CGEventType, the values that a keyboard tap sees.
enum class KeyEventType : std::uint32_t {
    keyDown = 10,
    flagsChanged = 12,
    tapDisabledByTimeout = 0xFFFFFFFE,
    tapDisabledByUserInput = 0xFFFFFFFF
};

/// A keyboard event (CGEvent). Key codes are macOS virtual key codes, which name positions; flags are CGEventFlags.
struct KeyEvent {
    KeyEventType type = KeyEventType::keyDown;
    std::int64_t keyCode = 0;
    std::uint64_t flags = 0;
};

/// Names the combination to swallow; an empty name passes the event on. Pure, allocation-free, callable on any thread.
using KeyDecision = std::string_view (*)(const KeyEvent&) noexcept;

/// Hears of every swallowed combination, always on the main thread.
using KeyReport = std::function<void(std::string_view name)>;

/// An installed tap. Destroying it disables the tap, takes it out of the run loop and releases it.
class KeyboardTap {
  public:
    virtual ~KeyboardTap() = default;
};

/// Making of keyboard taps. Main thread.
class KeyboardTaps {
  public:
    virtual ~KeyboardTaps() = default;

    /// CGEventTapCreate for the session, at the head, as an active filter of key-down and flags-changed events, in the
    /// common modes of the main run loop, enabled. Null when the system refuses. A tap whose thread does not answer for
    /// about a second is disabled by the system and stays so.
    [[nodiscard]] virtual std::unique_ptr<KeyboardTap> create(KeyDecision decision, KeyReport report) = 0;
};

}  // namespace vantrel
