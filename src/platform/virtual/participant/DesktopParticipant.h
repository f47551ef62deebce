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

/// What the participant does with other applications and Spaces. Any thread. None of this needs the client, so it
/// happens outside the client's threads, whatever the client shows. An application is found by its name, the oldest
/// running one first; its window is the front one. The client is one of them only when it is brought to the front.
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
    /// Asks it to end, like its menu.
    void quit(const std::string& application);
    /// Signal 9, sent from elsewhere on the Mac.
    void kill(const std::string& application);
    /// Moves its top left corner, counted from the top left of the primary display.
    void moveWindowOf(const std::string& application, Point origin);
    void resizeWindowOf(const std::string& application, Size size);
    void minimiseWindowOf(const std::string& application);
    /// Restores the minimised window from the Dock.
    void restoreWindowOf(const std::string& application);
    void closeWindowOf(const std::string& application);
    /// To full screen or back.
    void toggleFullScreenOf(const std::string& application);
    /// Chooses "Hide Others" in its menu.
    void hideOthersOf(const std::string& application);
    /// Shows the Space beside the current one on the primary display.
    void swipe(VirtualSpaces::Direction direction);
    /// Opens another window of an application, which comes to the front with it.
    void openWindowOf(const std::string& application, const NewWindow& window);

    /// Presses the modifiers, then the key `times` times as if it were held down, and releases all. Every event goes
    /// through the client's taps. KeyDelivery describes what happens to keys that pass.
    void pressKey(std::int64_t keyCode, std::uint64_t flags, int times = 1);
    void pressKey(const KeyStroke& key, int times = 1) { pressKey(key.keyCode, key.flags, times); }
    /// Seconds between the presses of a key that is held down.
    static constexpr double repeatInterval = 0.1;

  protected:
    explicit DesktopParticipant(const Dependencies& dependencies) : dependencies_(dependencies) {}
    ~DesktopParticipant() = default;

    /// A key for the client, which is in front. World's thread.
    virtual void keyForClient(const KeyStroke& key) = 0;
    /// Whether the client has a tap.
    bool isTapped() const { return dependencies_.keyboard.taps() > 0; }
    /// Sends the key through the taps. `passed` runs on the world's thread if none has swallowed it.
    void pressThrough(Happening what, const KeyStroke& key, Block passed);

    /// Does it, and returns why it had no effect, or an empty text.
    using Attempt = std::function<std::string(const std::function<void()>& heard)>;

    /// Records the event before its effects, or with the reason if it has none.
    void perform(const Happening& what, const Attempt& attempt);
    /// The effect of a click into the client's window.
    void bringClientToFront();

  private:
    using WindowAttempt = std::function<void(const AppWindow&)>;

    void inWorld(Happening what, Attempt attempt);
    /// The modifiers as they are pressed or released.
    void changeFlags(std::uint64_t flags, bool down);
    void deliver(const KeyStroke& key);
    /// The effect of a click into another application's window.
    void bringToFront(ProcessIdentifier process);
    /// The oldest one of that name that counts.
    std::shared_ptr<VirtualProcess> running(const std::string& application,
                                            const std::function<bool(const VirtualProcess&)>& counts) const;
    std::shared_ptr<VirtualProcess> runningOther(const std::string& application) const;
    /// Does the deed to the window that `pick` chooses among the application's. The application is the text of `what`.
    void withWindow(const Happening& what, const std::function<bool(const AppWindow&)>& pick, WindowAttempt attempt);

    const Dependencies dependencies_;
};

}  // namespace vantrel::virtualmac
