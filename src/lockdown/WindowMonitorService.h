#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "browser/BrowserLauncher.h"
#include "browser/FullscreenObserver.h"
#include "lockdown/BrowserKill.h"
#include "lockdown/SessionEndReason.h"
#include "platform/apps/Bundle.h"
#include "platform/apps/FrontmostApplication.h"
#include "platform/apps/RunningApplications.h"
#include "platform/desktop/Accessibility.h"
#include "platform/desktop/Screens.h"
#include "platform/desktop/Spaces.h"
#include "platform/desktop/WindowList.h"
#include "platform/system/Log.h"
#include "platform/threads/Dispatch.h"
#include "platform/threads/Observation.h"
#include "platform/threads/RunLoop.h"

namespace vantrel {

/// Watches the browser with the meeting. It repairs small faults, reports when another application takes the focus, and
/// ends the session when the window or the browser is gone or the participant has left the meeting's Space. Main
/// thread; always shared.
class WindowMonitorService : public FullscreenObserver, public std::enable_shared_from_this<WindowMonitorService> {
  public:
    struct Dependencies {
        RunningApplications& applications;
        WindowList& windows;
        Accessibility& accessibility;
        Screens& screens;
        Spaces& spaces;
        FrontmostApplication& frontmost;
        Bundle& mainBundle;
        Dispatch& dispatch;
        RunLoop& mainRunLoop;
        Log& log;
    };

    /// Seconds between two ticks.
    static constexpr double checkInterval = 1.5;
    /// Appears only in the log: the decision is made at a count of 2.
    static constexpr int notVisibleThreshold = 6;
    /// For how many ticks it waits for a browser that has never been seen.
    static constexpr int startupGraceTicks = 8;

    WindowMonitorService(const Dependencies& dependencies, const BrowserKill& kill);

    /// The meeting link, for readers of the monitor's state.
    std::string authorizedMeetURL;

    /// Called when another application has taken the focus. Main thread; set before the start.
    std::function<void(const std::string& detail)> onViolation;
    /// Called when the session is over, at most once for each start. The monitor has stopped by then. Main thread; set
    /// before the start.
    std::function<void(SessionEndReason)> onSessionEnded;

    bool isActive() const { return isActive_; }

    void startMonitoring(const std::shared_ptr<BrowserLauncher>& launcher);
    void stopMonitoring();

    void setFullscreenConfirmed(bool confirmed) override { fullscreenConfirmed_ = confirmed; }

  private:
    using Windows = std::vector<WindowEntry>;

    void tick();
    void handleMissingBrowser(BrowserLauncher& launcher);
    void handleInvisibleWindow(ProcessIdentifier process);
    void checkGeometry(BrowserLauncher& launcher, ProcessIdentifier process);
    void checkFocus(BrowserLauncher& launcher, ProcessIdentifier process);
    bool isFocusedWindowFullscreen(ProcessIdentifier process) const;
    void enforceFullscreenSoon(BrowserLauncher& launcher);

    void observeSpaces();
    void handleSpaceChange();
    void checkSpace();

    /// The browser's process if it runs.
    std::optional<ProcessIdentifier> runningBrowser(const BrowserLauncher& launcher) const;
    bool isBrowserWindowVisible(ProcessIdentifier process) const;
    Windows allWindows() const;
    Size screenSize() const;

    void end(SessionEndReason reason);
    void print(std::string_view line) { dependencies_.log.print(line); }

    const Dependencies dependencies_;
    const BrowserKill kill_;
    const std::string vantrelBundleId_;

    std::unique_ptr<Timer> timer_;
    bool isActive_ = false;
    int browserNotVisibleCount_ = 0;
    bool fullscreenConfirmed_ = false;
    int startupGraceRemaining_ = 0;
    std::weak_ptr<BrowserLauncher> browserLauncher_;
    std::unique_ptr<Observation> spaceChangeObserver_;
};

}  // namespace vantrel
