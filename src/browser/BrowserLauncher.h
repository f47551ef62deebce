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

/// Owns the participant's browser for one session: starts it with the meeting, brings its window to full screen, and
/// closes it at the end. Always shared. The last reference is dropped on the main thread.
///
/// The launch's thread, the main thread and the browser kill's thread write its state; any thread reads it. Blocks that
/// it leaves with a queue or a timer hold it weakly, except the delayed attempt after a launch through the workspace.
class BrowserLauncher : public std::enable_shared_from_this<BrowserLauncher> {
  public:
    /// The parts of the computer that it uses.
    struct Dependencies {
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

    explicit BrowserLauncher(const Dependencies& dependencies, Detection detect = detectSupportedBrowser);

    /// Called when the browser could not be started, with a reason for the participant. Main thread; set before the
    /// launch.
    std::function<void(const std::string& reason)> onSessionEnded;

    /// Called when full screen is confirmed. Main thread.
    std::weak_ptr<FullscreenObserver> windowMonitor;

    /// The process with the meeting window.
    std::optional<ProcessIdentifier> browserPID() const { return locked(&State::browserPID); }
    /// The handle of that process. Null if there is none.
    std::shared_ptr<RunningApplication> browserApp() const { return locked(&State::browserApp); }
    /// The number of the meeting window, if it was looked for and found.
    std::optional<std::int64_t> windowNumber() const { return locked(&State::windowNumber); }
    std::optional<SupportedBrowser> detectedBrowser() const { return locked(&State::detectedBrowser); }
    /// Whether the browser was running already. Always false if it was opened through the workspace.
    bool wasPreExisting() const { return locked(&State::wasPreExisting); }
    /// Whether the meeting window is known to be in full screen, or the attempts have run out.
    bool isConfirmedFullscreen() const { return locked(&State::isConfirmedFullscreen); }
    /// Attempts in this series.
    int fullscreenRetryCount() const { return locked(&State::fullscreenRetryCount); }

    /// Opens the meeting, given as a link or a bare code. It blocks, so it must not run on the main thread: 3 seconds
    /// if the browser is started as a process, about 3.4 to 15.4 seconds if it is opened through the workspace. It
    /// returns at once if there is no browser, its process does not start or an address forms no URL. Once for each
    /// launcher.
    void launch(const std::string& meetURL);

    /// One attempt at full screen. Main thread.
    void attemptFullscreen();
    /// Any thread. An attempt whose timer has already fired still runs.
    void cancelFullscreenRetry();

    /// Main thread.
    void bringToFront();
    /// Follows the browser to its new process. Main thread.
    void adoptRunningApplication(const std::shared_ptr<RunningApplication>& application);

    /// Closes the browser at the end of a session: only its windows if it was running before, the whole browser if it
    /// was started here. Main thread; blocks for at most about 2.2 seconds, or 0.5 seconds for each full-screen window.
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
    void print(std::string_view line) { dependencies_.log.print(line); }

    const Dependencies dependencies_;
    const Detection detect_;
    const WindowDiscovery discovery_;
    const BrowserShutdown shutdown_;

    mutable Lock lock_;
    State state_;
    std::unique_ptr<Timer> fullscreenRetryTimer_;
};

}  // namespace vantrel
