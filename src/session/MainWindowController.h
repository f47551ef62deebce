#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "browser/BrowserLauncher.h"
#include "lockdown/BlackoutOverlayManager.h"
#include "lockdown/KeyboardHookService.h"
#include "lockdown/SessionEndReason.h"
#include "lockdown/WindowMonitorService.h"
#include "platform/Computer.h"
#include "server/HeartbeatService.h"
#include "server/JoinOutcome.h"
#include "server/ServerRequests.h"
#include "server/SessionJoin.h"
#include "server/VersionCheck.h"
#include "session/EndScreen.h"
#include "session/JoinScreen.h"
#include "session/UpdatePrompts.h"

namespace vantrel {

/// The session controller: owns the main window, turns a join into a lockdown and ends it through one routine. Main
/// thread, but for joinSession.
class MainWindowController : public std::enable_shared_from_this<MainWindowController> {
  public:
    /// Builds the window with its screens and has the version checked one second later.
    static std::shared_ptr<MainWindowController> create(const Computer& computer);

    /// For create only: a controller made without it has no window.
    explicit MainWindowController(const Computer& computer);

    Window& window() { return *window_; }
    bool isInLockdown() const { return isInLockdown_; }

    /// Action of the join button.
    void joinTapped();
    /// Action of the end screen's button: shows the join screen again.
    void resetToJoin();
    /// Action of the status menu's end item.
    void menuEndSession();

    /// Ends the session for whatever cause; a request without a lockdown does nothing.
    void endSession(SessionEndReason reason);

    /// Asks the server whether a newer client exists; returns at once.
    void checkForUpdates();

  private:
    /// On the URL session's queue.
    void handleVersionReply(const URLReply& reply);
    void showUpdateAlert(const UpdateOffer& offer) { updatePrompts_.showUpdate(offer, clientVersion_); }
    void showRequiredUpdateAlert(const std::string& message, const std::string& downloadUrl) {
        updatePrompts_.showRequiredUpdate(message, downloadUrl);
    }

    /// Blocks for at most about 20 seconds; on a background queue only.
    JoinOutcome joinSession(const JoinScreen::Input& input) const;
    void handleJoinOutcome(const std::string& sessionCode, const JoinOutcome& outcome);

    void activateLockdown(const std::string& sessionCode, const JoinResult& result);
    bool verifyAccessibility();
    void createServices(const std::string& sessionCode, const JoinResult& result);
    void wireServices();
    /// Numbers the lockdown that is being activated: a new number when none stands, else the one that stands, which
    /// presses of the join button share.
    void enterLockdown();
    /// What an activation left pending (prompts, the browser's launch) goes on only in the lockdown that it was begun
    /// in: a second press must not keep the first from locking, and an end must leave nothing that comes back.
    bool stands(std::uint64_t lockdown) const { return isInLockdown_ && lockdown == lockdownNumber_; }
    /// `launcher` is the activation's own: one that was replaced meanwhile opens no browser.
    void launchBrowser(const std::weak_ptr<BrowserLauncher>& launcher, const std::string& sessionCode,
                       const JoinResult& result);
    void completeLockdown(const std::string& sessionCode, const JoinResult& result);
    void startKeyboardHook();
    void startWindowMonitor(const std::string& meetLink);
    void coverSecondaryDisplays();
    void installStatusItem(const std::string& sessionTitle, const std::string& sessionCode);
    void endOnMainQueue(SessionEndReason reason);

    void closeBrowserIfRunning();
    void setClosable(bool closable);
    void print(std::string_view line) { computer_.log.print(line); }

    const Computer computer_;
    const std::string clientVersion_ = "2.0-macOS";

    std::shared_ptr<KeyboardHookService> keyboardHook_;
    std::shared_ptr<WindowMonitorService> windowMonitor_;
    std::shared_ptr<HeartbeatService> heartbeat_;
    std::shared_ptr<BrowserLauncher> browserLauncher_;
    std::shared_ptr<BlackoutOverlayManager> blackoutOverlay_;
    bool isInLockdown_ = false;
    std::uint64_t lockdownNumber_ = 0;
    std::unique_ptr<StatusItem> statusItem_;

    std::unique_ptr<Window> window_;
    std::unique_ptr<JoinScreen> joinScreen_;
    std::unique_ptr<EndScreen> endScreen_;
    const ServerRequests requests_;
    UpdatePrompts updatePrompts_;
    SessionJoin sessionJoin_;
    const VersionCheck versionCheck_;
};

}  // namespace vantrel
