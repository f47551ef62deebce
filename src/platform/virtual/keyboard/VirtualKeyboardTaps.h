#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <limits>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/keyboard/KeyboardTap.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/system/VirtualAccessibilityTrust.h"

namespace vantrel::virtualmac {

/// Passes keys through the client's taps, one after the other. A tap is asked on the main thread, in every mode of its
/// run loop, the newest tap first. If its thread does not answer within `tapTimeout`, the system disables it. If the
/// client loses the Accessibility permission, the system disables all taps. The waiting key then passes, and so does
/// every later one. A disabled tap is told on the main thread and stays disabled.
class VirtualKeyboardTaps final : public KeyboardTaps {
  public:
    static constexpr double tapTimeout = 1;
    static constexpr int always = std::numeric_limits<int>::max();

    VirtualKeyboardTaps(Engine& engine, VirtualAccessibilityTrust& trust);

    /// Null also without the Accessibility permission.
    [[nodiscard]] std::unique_ptr<KeyboardTap> create(KeyDecision decision, KeyReport report) override;

    /// Whether the tap swallows the key. Its answer to a notification that it was disabled is ignored. Main thread.
    using KeyFilter = std::function<bool(const KeyEvent&)>;
    /// The lower level of create(), as in the system: it knows no names and reports nothing.
    [[nodiscard]] std::unique_ptr<KeyboardTap> createFilter(KeyFilter filter);

    /// The client has been refused something for want of the permission. If the system still calls it trusted, a second
    /// tap is asked for: if that is refused too, the permission is gone, and so are the client's taps. Any thread.
    void noteLostTrust();

    /// Driver-facing, any thread: whether the loss of the permission holds up every key until the last tap is gone,
    /// instead of disabling the taps. Both are reported of Macs.
    void setFreezing(bool freezes) { freezes_ = freezes; }
    /// Driver-facing, any thread: the system refuses the next `times` taps. 0 ends that.
    void refuse(int times);
    /// While a password field has the keyboard, keys go past all taps.
    void setSecureInput(bool on) { secureInput_ = on; }
    /// The taps that exist, and those of them that are not disabled.
    std::size_t taps() const;
    std::size_t enabledTaps() const;

    /// The keyboard sends a key event. `passed`, if not null, runs on the world's thread if no tap has swallowed it.
    /// World's thread.
    void press(const KeyEvent& event, Block passed);

  private:
    class Tap;
    class ClientTap;
    struct State {
        std::shared_ptr<const KeyFilter> filter;
        bool enabled = true;
    };
    using StatePointer = std::shared_ptr<State>;
    struct Pressed {
        KeyEvent event;
        Block passed;
        /// The taps still to be asked, in order.
        std::vector<StatePointer> ahead;
    };

    /// With the mutex held.
    std::vector<StatePointer> tapsToAsk() const;
    void ask();
    void decide(const StatePointer& tap, std::uint64_t question, const KeyEvent& event);
    /// The tap with that open question lets the key pass.
    void pass(std::uint64_t question);
    void swallow(std::uint64_t question);
    void giveUp(const StatePointer& tap, std::uint64_t question);
    void goOn();
    void disable(const StatePointer& tap, KeyEventType notice);
    void disableAll();
    void remove(const StatePointer& tap);
    bool givesAnother();

    Engine& engine_;
    VirtualAccessibilityTrust& trust_;
    /// Main thread.
    std::vector<ClientTap*> clientTaps_;
    Moment nextAsking_ = 0;
    std::atomic<bool> secureInput_ = false;
    std::atomic<bool> freezes_ = false;
    mutable std::mutex mutex_;
    /// Newest first.
    std::vector<StatePointer> taps_;
    int refusals_ = 0;
    /// No key goes on.
    bool frozen_ = false;
    /// The first one is being passed through the taps.
    std::deque<Pressed> keys_;
    std::uint64_t questions_ = 0;
    /// The question that waits for an answer, or 0.
    std::uint64_t open_ = 0;
    /// The question that the main thread is answering.
    std::uint64_t heard_ = 0;
};

}  // namespace vantrel::virtualmac
