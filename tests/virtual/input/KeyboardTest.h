#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/virtual/keyboard/KeyStroke.h"
#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {

/// Names every key that is pressed with Command or Control.
inline std::string_view everyShortcut(const KeyEvent& event) noexcept {
    if (event.type != KeyEventType::keyDown) return {};
    return (event.flags & (KeyStroke::command | KeyStroke::control)) != 0 ? "shortcut" : std::string_view();
}

/// A test with Chrome and a window of it in front of Terminal, which has a window too.
class KeyboardTest : public MacTest {
  protected:
    using Lines = std::vector<std::string>;

    void SetUp() override {
        terminal = mac().applications().add({"Terminal", "com.apple.Terminal"});
        mac().applications().openWindow(terminal, {"bash"});
        chrome = mac().applications().add({"Google Chrome", "com.google.Chrome"});
        window = mac().applications().openWindow(chrome, {"Lezione", {{100, 100}, {800, 600}}});
        forgetEvents();
    }

    void TearDown() override {
        mac().onMain([this] { tap.reset(); });
        MacTest::TearDown();
    }

    void startTap(KeyDecision decision = everyShortcut) {
        mac().onMain([this, decision] {
            tap = computer().keyboardTaps.create(decision, [this](std::string_view name) {
                computer().log.print(std::string(name) + (computer().threads.isMainThread() ? "" : " elsewhere"));
            });
        });
    }

    void press(std::string_view text) { participant().pressKey(*KeyStroke::parse(text)); }
    /// The same, and returns the immediate effects.
    void pressAndSee(std::string_view text) {
        press(text);
        mac().runFor(0);
    }

    AppWindow state() { return mac().desktop().window(window).value_or(AppWindow{}); }
    std::string inFront() { return mac().desktop().front().front().name; }

    std::unique_ptr<KeyboardTap> tap;
    ProcessIdentifier terminal = 0;
    ProcessIdentifier chrome = 0;
    std::int64_t window = 0;
};

}  // namespace vantrel::virtualmac
