#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "browser/BrowserShutdown.h"
#include "browser/FullscreenObserver.h"
#include "browser/SupportedBrowser.h"
#include "browser/WindowDiscovery.h"
#include "platform/apps/ApplicationOpener.h"
#include "platform/apps/ProcessLauncher.h"
#include "platform/apps/RunningApplications.h"
#include "platform/desktop/Accessibility.h"
#include "platform/desktop/Screens.h"
#include "platform/desktop/WindowList.h"
#include "platform/network/URLs.h"
#include "platform/system/FileManager.h"
#include "platform/system/Log.h"
#include "platform/threads/Clock.h"
#include "platform/threads/Dispatch.h"
#include "platform/threads/Lock.h"
#include "platform/threads/RunLoop.h"
#include "platform/threads/Threads.h"

namespace vantrel {

/// Owns the participant's browser for one session: starts it on the meeting, drives its window to full screen, gives it
/// back at the end. Always shared, and its last reference is dropped on the main thread.
///
/// Its state is written by the launch's thread, the main thread and the browser kill's, and read on any thread. A
/// closure that it leaves with a queue or a timer holds it weakly, but for the delayed attempt after a launch through
/// the workspace.
class BrowserLauncher : public std::enable_shared_from_this<BrowserLauncher> {
  public:
    /// What it touches of the computer.
    struct Platform {
        FileManager& files;
        ProcessLauncher& processes;
        RunningApplications& applications;
        ApplicationOpener& opener;
        WindowList& windows;
        Accessibility& accessibility;
        Screens& screens;
        URLs& urls;
        Dispatch& dispatch;
        RunLoop& mainRunLoop;
        Threads& threads;
        Clock& clock;
        Log& log;
    };
    using Detection = std::function<std::optional<SupportedBrowser>(const FileManager&)>;

    static constexpr int maxFullscreenRetries = 8;

    explicit BrowserLauncher(const Platform& platform, Detection detect = detectSupportedBrowser);

    /// Hears, in words for the participant, that the browser could not be started. Main thread; set before the launch.
    std::function<void(const std::string& reason)> onSessionEnded;

    /// Told when full screen is confirmed. Main thread.
    std::weak_ptr<FullscreenObserver> windowMonitor;

    /// The process that owns the meeting window.
    std::optional<ProcessIdentifier> browserPID() const { return locked(&State::browserPID); }
    /// The handle of that process; null when there is none.
    std::shared_ptr<RunningApplication> browserApp() const { return locked(&State::browserApp); }
    /// The meeting window, where it was looked for and found.
    std::optional<std::int64_t> windowNumber() const { return locked(&State::windowNumber); }
    std::optional<SupportedBrowser> detectedBrowser() const { return locked(&State::detectedBrowser); }
    /// Whether the browser was running already; never true where it was opened through the workspace.
    bool wasPreExisting() const { return locked(&State::wasPreExisting); }
    /// Whether the meeting window is known to be in full screen, or the attempts have run out.
    bool isConfirmedFullscreen() const { return locked(&State::isConfirmedFullscreen); }
    /// Attempts in this series.
    int fullscreenRetryCount() const { return locked(&State::fullscreenRetryCount); }

    /// Opens the meeting, a link or a bare code. Never on the main thread, for it blocks its own: 3 seconds where the
    /// browser is started as a process, about 3.4 to 15.4 seconds where it is opened through the workspace, and no time
    /// where there is no browser, its process does not start or an address forms no URL. Once for each launcher.
    void launch(const std::string& meetURL);

    /// One attempt at full screen. Main thread.
    void attemptFullscreen();
    /// Any thread. An attempt whose timer has fired already still comes.
    void cancelFullscreenRetry();

    /// Main thread.
    void bringToFront();
    /// Takes over the browser's new process. Main thread.
    void adoptRunningApplication(const std::shared_ptr<RunningApplication>& application);

    /// Gives the browser back at the end of a session: closes the windows of one that was running already, ends one
    /// that was started. Main thread; blocks for at most about 2.2 seconds, or 0.5 seconds for each full-screen window.
    void closeBrowser();

  private:
    struct State {
        std::optional<ProcessIdentifier> browserPID;
        std::shared_ptr<RunningApplication> browserApp;
        std::optional<std::int64_t> windowNumber;
        std::optional<SupportedBrowser> detectedBrowser;
        bool wasPreExisting = false;
        bool isConfirmedFullscreen = false;
        int fullscreenRetryCount = 0;
    };

    template <typename Field>
    Field locked(Field State::*field) const {
        const std::lock_guard guard(lock_);
        return state_.*field;
    }
    template <typename Function>
    void change(Function function) {
        const std::lock_guard guard(lock_);
        function(state_);
    }

    void resetState();
    void launchProcess(const std::string& meetURL, SupportedBrowser browser);
    void settleProcess(SupportedBrowser browser, ProcessIdentifier started,
                       const std::shared_ptr<RunningApplication>& preExisting);
    void openInSafari(const std::string& meetURL, const WindowDiscovery::Windows& before);
    void handleOpened(const ApplicationOpener::Result& result);
    void waitForNewWindow(const WindowDiscovery::Windows& before);
    std::shared_ptr<RunningApplication> firstRunning(SupportedBrowser browser) const;
    void take(const std::shared_ptr<RunningApplication>& application);

    void confirmFullscreen();
    void maximise(AccessibilityElement& window);
    void scheduleFullscreenRetry();
    void replaceRetryTimer(std::unique_ptr<Timer> timer);

    /// For log lines.
    std::string browserName() const;
    void print(std::string_view line) { platform_.log.print(line); }

    const Platform platform_;
    const Detection detect_;
    const WindowDiscovery discovery_;
    const BrowserShutdown shutdown_;

    mutable Lock lock_;
    State state_;
    std::unique_ptr<Timer> fullscreenRetryTimer_;
};

}  // namespace vantrel
