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

/// Whoever sits in front of the Mac. Any thread; each operation on the client becomes an event of the main thread, and
/// the journal's "participant" event tells whether it had any effect: `ignored` then says why not. While alerts are up
/// or a menu is open only the one in front answers, which is whichever opened last.
class Participant final : public DesktopParticipant {
  public:
    struct Dependencies : DesktopParticipant::Dependencies {
        VirtualWindows& windows;
        VirtualAlerts& alerts;
        MenuTracking& menus;
        VirtualStatusBar& statusBar;
        VirtualApplication& application;
        VirtualCaptureAuthorization& capture;
    };

    explicit Participant(const Dependencies& dependencies)
        : DesktopParticipant(dependencies), dependencies_(dependencies) {}

    /// Replaces what stands in a field.
    void type(const std::string& fieldId, std::string text);
    /// Clicks the button of that id, or else of that title.
    void press(const std::string& button);
    /// The key equivalent "\r" of a button in the key window, or the first button of an alert.
    void pressReturn();
    void answerAlert(const std::string& buttonTitle);
    /// Clicks the oldest status item.
    void openStatusMenu();
    /// Clicks the main menu's submenu of that title.
    void openMainMenu(const std::string& title);
    void chooseMenuItem(const std::string& title);
    void closeMenu();
    /// A key equivalent of the main menu, a letter; an upper-case one means Shift as well. With the client in front,
    /// whatever is; it goes through the client's taps, too.
    void pressCommand(const std::string& key);
    /// The close button of the window in front.
    void closeWindow();
    /// The system asks the application to terminate.
    void logOut();
    /// The oldest permission prompt; the system's, so it works whatever the application shows.
    void answerPermissionPrompt(bool granted);

  private:
    void post(Happening what, Attempt attempt);
    /// What keeps the participant from the windows; empty for nothing.
    std::string busy() const;
    bool isMenuInFront() const;
    /// Why the participant cannot use the open menu; empty when that is possible.
    std::string whyNoMenu() const;
    std::string press(const WindowState& window, const Control& button, const std::function<void()>& heard);
    void track(const std::string& title, const Menu& menu, std::uint64_t statusItem = 0);
    /// What the main menu does on Command with that key.
    std::string performKeyEquivalent(const std::string& key, const std::function<void()>& heard);
    /// What Return does.
    std::string performReturn(const std::function<void()>& heard);
    void keyForClient(const KeyStroke& key) override;

    const Dependencies dependencies_;
};

}  // namespace vantrel::virtualmac
