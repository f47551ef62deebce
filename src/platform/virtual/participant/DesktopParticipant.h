#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/desktop/Geometry.h"
#include "platform/virtual/apps/VirtualProcessLauncher.h"
#include "platform/virtual/desktop/VirtualSpaces.h"
#include "platform/virtual/journal/Journal.h"
#include "platform/virtual/keyboard/KeyStroke.h"
#include "platform/virtual/keyboard/VirtualKeyboardTaps.h"
#include "platform/virtual/participant/KeyDelivery.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// What the participant does with other applications and Spaces. Any thread. Nothing of it needs the client, so it
/// happens apart from the client's threads, whatever the client shows. An application goes by its name and is the
/// oldest one that runs; its window is the front one.
class DesktopParticipant {
  public:
    struct Dependencies {
        Engine& engine;
        VirtualDesktop& desktop;
        VirtualSpaces& spaces;
        VirtualProcessLauncher& processes;
        VirtualKeyboardTaps& keyboard;
        KeyDelivery& keys;
    };

    void openApplication(const std::string& executablePath);
    void bringToFront(const std::string& application);
    /// Asks it to end, as its menu does.
    void quit(const std::string& application);
    /// Signal 9, from somewhere else on the Mac.
    void kill(const std::string& application);
    /// The top left corner, from the top left of the primary display.
    void moveWindowOf(const std::string& application, Point origin);
    void resizeWindowOf(const std::string& application, Size size);
    void minimiseWindowOf(const std::string& application);
    /// Takes the minimised window out of the Dock.
    void restoreWindowOf(const std::string& application);
    void closeWindowOf(const std::string& application);
    /// To full screen or back.
    void toggleFullScreenOf(const std::string& application);
    /// Shows the Space beside the current one of the primary display.
    void swipe(VirtualSpaces::Direction direction);
    /// A further window of an application, which comes to the front with it.
    void openWindowOf(const std::string& application, const NewWindow& window);

    /// Presses the modifiers, then the key, `times` times in a row as when it is held down, then lets go. Every event
    /// goes through the client's taps; what they let pass, KeyDelivery tells.
    void pressKey(std::int64_t keyCode, std::uint64_t flags, int times = 1);
    void pressKey(const KeyStroke& key, int times = 1) { pressKey(key.keyCode, key.flags, times); }
    /// Seconds between the presses of a key that is held down.
    static constexpr double repeatInterval = 0.1;

  protected:
    explicit DesktopParticipant(const Dependencies& dependencies) : dependencies_(dependencies) {}
    ~DesktopParticipant() = default;

    /// A key that the client gets, being in front. World's thread.
    virtual void keyForClient(const KeyStroke& key) = 0;
    /// Whether a tap of the client stands.
    bool isTapped() const { return dependencies_.keyboard.taps() > 0; }
    /// The key goes through the taps; `passed` runs on the world's thread when none has swallowed it.
    void pressThrough(Happening what, const KeyStroke& key, Block passed);

    /// Does it and returns why it has no effect; empty when it has one.
    using Attempt = std::function<std::string(const std::function<void()>& heard)>;

    /// The event is written down before what comes of it, or with the reason when nothing does.
    void perform(const Happening& what, const Attempt& attempt);
    /// A click into the client's window does that.
    void bringClientToFront();

  private:
    using WindowAttempt = std::function<void(const AppWindow&)>;

    void inWorld(Happening what, Attempt attempt);
    /// The modifiers as they go down or up.
    void changeFlags(std::uint64_t flags, bool down);
    void deliver(const KeyStroke& key);
    /// A click into another application's window does that.
    void bringToFront(ProcessIdentifier process);
    std::shared_ptr<VirtualProcess> running(const std::string& application) const;
    /// The deed is done to the window that `pick` takes of the application's; the application is the text of `what`.
    void withWindow(const Happening& what, const std::function<bool(const AppWindow&)>& pick, WindowAttempt attempt);

    const Dependencies dependencies_;
};

}  // namespace vantrel::virtualmac
