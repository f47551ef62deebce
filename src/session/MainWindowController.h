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
#include "session/ClientVersion.h"
#include "session/EndScreen.h"
#include "session/JoinScreen.h"
#include "session/JoinedSession.h"
#include "session/UpdatePrompts.h"

namespace vantrel {

/// The session controller. Owns the main window, turns a join into a lockdown and ends it through one routine. Main
/// thread, except joinSession.
class MainWindowController : public std::enable_shared_from_this<MainWindowController> {
  public:
    /// Builds the window with its screens and checks the version one second later.
    static std::shared_ptr<MainWindowController> create(const Computer& computer);

    /// For create only: the constructor makes no window.
    explicit MainWindowController(const Computer& computer);

    Window& window() { return *window_; }
    bool isInLockdown() const { return isInLockdown_; }

    /// Action of the join button.
    void joinTapped();
    /// Action of the end screen's button: shows the join screen again.
    void resetToJoin();
    /// Action of the status menu's end item.
    void menuEndSession();

    /// Ends the session, whatever the cause. Does nothing without a lockdown.
    void endSession(SessionEndReason reason);

    /// Asks the server whether a newer client exists. Returns at once.
    void checkForUpdates();

  private:
    /// On the URL session's queue.
    void handleVersionReply(const URLReply& reply);
    void showUpdateAlert(const UpdateOffer& offer) { updatePrompts_.showUpdate(offer, clientVersion_); }
    void showRequiredUpdateAlert(const std::string& message, const std::string& downloadUrl) {
        updatePrompts_.showRequiredUpdate(message, downloadUrl);
    }

    /// Blocks for at most about 20 seconds. Call it on a background queue only.
    JoinOutcome joinSession(const JoinScreen::Input& input) const;
    void handleJoinOutcome(const std::string& sessionCode, const JoinOutcome& outcome);

    void activateLockdown(const JoinedSession& session);
    bool verifyAccessibility();
    void createServices(const JoinedSession& session);
    void wireServices();
    /// Gives the activated lockdown its number: a new one if none stands, otherwise the number of the one that stands,
    /// which further presses of the join button share.
    void enterLockdown();
    void leaveLockdown();
    /// What an activation left pending (prompts, the browser's launch) continues only in the lockdown in which it
    /// began: a second press must not keep the first from locking, and after an end nothing may come back.
    bool stands(std::uint64_t lockdown) const { return isInLockdown_ && lockdown == lockdownNumber_; }
    /// `launcher` is this activation's own. If it was replaced meanwhile, it opens no browser.
    void launchBrowser(const std::weak_ptr<BrowserLauncher>& launcher, const JoinedSession& session);
    void completeLockdown(const JoinedSession& session);
    /// Another activation has replaced the services of a complete lockdown: theirs start at once, not after its launch,
    /// which may wait behind a prompt for ever.
    void continueLockdown(const JoinedSession& session);
    void startKeyboardHook();
    void startWindowMonitor(const std::string& meetLink);
    void watchBrowser(const std::string& meetLink);
    void startHeartbeat();
    void coverSecondaryDisplays();
    void installStatusItem(const JoinedSession& session);
    void endOnMainQueue(SessionEndReason reason);

    void closeBrowserIfRunning();
    void setClosable(bool closable);
    void print(std::string_view line) { computer_.log.print(line); }

    const Computer computer_;
    const std::string clientVersion_{fixedClientVersion};

    /// Four services that an activation makes together and the end routine drops together. A lockdown that launches its
    /// browser or is complete has all four; before that, and after an end, there are none.
    std::shared_ptr<KeyboardHookService> keyboardHook_;
    std::shared_ptr<WindowMonitorService> windowMonitor_;
    std::shared_ptr<HeartbeatService> heartbeat_;
    std::shared_ptr<BrowserLauncher> browserLauncher_;
    /// Only from the lockdown's completion on.
    std::shared_ptr<BlackoutOverlayManager> blackoutOverlay_;
    bool isInLockdown_ = false;
    std::uint64_t lockdownNumber_ = 0;
    /// From the lockdown's start to the end of its end routine, whether there is a keyboard tap or not: a browser that
    /// hangs must not hold up the main thread for long.
    std::unique_ptr<AccessibilityTimeLimit> accessibilityLimit_;
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
