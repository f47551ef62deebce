#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

namespace vantrel {

/// The CGEventType values that a keyboard tap sees.
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

/// Returns the name of the combination to swallow, or an empty name to pass the event on. Pure, allocation-free,
/// callable on any thread.
using KeyDecision = std::string_view (*)(const KeyEvent&) noexcept;

/// Called for every swallowed combination, always on the main thread.
using KeyReport = std::function<void(std::string_view name)>;

/// An installed tap. Destroying it disables the tap, removes it from the run loop and releases it.
class KeyboardTap {
  public:
    virtual ~KeyboardTap() = default;
};

/// Creates keyboard taps. Main thread.
class KeyboardTaps {
  public:
    virtual ~KeyboardTaps() = default;

    /// CGEventTapCreate for the session, at the head, as an active filter of key-down and flags-changed events, in the
    /// common modes of the main run loop, enabled. Null if the system refuses. If a tap's thread does not answer for
    /// about a second, the system disables the tap for good.
    [[nodiscard]] virtual std::unique_ptr<KeyboardTap> create(KeyDecision decision, KeyReport report) = 0;
};

}  // namespace vantrel
