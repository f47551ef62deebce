#pragma once

#include <functional>
#include <string>

#include "platform/virtual/journal/Journal.h"
#include "platform/virtual/participant/DesktopParticipant.h"
#include "platform/virtual/system/VirtualCaptureAuthorization.h"
#include "platform/virtual/ui/MenuTracking.h"
#include "platform/virtual/ui/VirtualAlerts.h"
#include "platform/virtual/ui/VirtualApplication.h"
#include "platform/virtual/ui/VirtualStatusBar.h"
#include "platform/virtual/ui/VirtualWindows.h"

namespace vantrel::virtualmac {

/// The person using the Mac. Any thread. Each operation on the client becomes an event of the main thread. The
/// journal's "participant" event says whether it had an effect; if not, `ignored` says why. While alerts are shown or a
/// menu is open, only the front one reacts, which is the one opened last.
class Participant final : public DesktopParticipant {
  public:
    struct Dependencies : DesktopParticipant::Dependencies {
        VirtualWindows& windows;
        VirtualAlerts& alerts;
        MenuTracking& menus;
        VirtualStatusBar& statusBar;
        VirtualApplication& application;
        VirtualCaptureAuthorization& capture;
        int systemVersion;
    };

    /// From here on a choice from a status menu is delivered inside a block of the main queue.
    static constexpr int firstSystemThatHostsStatusItems = 26;

    explicit Participant(const Dependencies& dependencies)
        : DesktopParticipant(dependencies), dependencies_(dependencies) {}

    /// Replaces the text of a field.
    void type(const std::string& fieldId, std::string text);
    /// Clicks the button with that id, or else that title.
    void press(const std::string& button);
    /// The key equivalent "\r" of a button in the key window, or the first button of an alert.
    void pressReturn();
    void answerAlert(const std::string& buttonTitle);
    /// Clicks the oldest status item.
    void openStatusMenu();
    /// Opens the main menu's submenu with that title.
    void openMainMenu(const std::string& title);
    void chooseMenuItem(const std::string& title);
    void closeMenu();
    /// A key equivalent of the main menu, given as a letter; an upper-case one also needs Shift. The client comes to
    /// the front first. The key goes through the client's taps, too.
    void pressCommand(const std::string& key);
    /// Clicks the close button of the front window.
    void closeWindow();
    /// The system asks the application to terminate.
    void logOut();
    /// Answers the oldest permission prompt. The system shows it, so it works whatever the application shows.
    void answerPermissionPrompt(bool granted);

  private:
    /// The client's front window on the screen.
    std::optional<WindowState> frontWindow() const;
    void post(Happening what, Attempt attempt);
    /// What keeps the participant from the windows. Empty for nothing.
    std::string busy() const;
    bool isMenuInFront() const;
    /// Why the participant cannot use the open menu. Empty if that is possible.
    std::string whyNoMenu() const;
    std::string press(const WindowState& window, const Control& button, const std::function<void()>& heard);
    void track(const std::string& title, const Menu& menu, std::uint64_t statusItem = 0);
    /// What the main menu does for Command with that key.
    std::string performKeyEquivalent(const std::string& key, const std::function<void()>& heard);
    /// What Return does.
    std::string performReturn(const std::function<void()>& heard);
    void keyForClient(const KeyStroke& key) override;

    const Dependencies dependencies_;
};

}  // namespace vantrel::virtualmac
