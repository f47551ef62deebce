#pragma once

#include <memory>
#include <optional>
#include <string>

#include "browser/FullscreenObserver.h"
#include "platform/RunningApplications.h"

namespace vantrel {

/// Owns the participant's browser for one session. Driving a browser is still to come: the operations below are called
/// in their places and do nothing, and no process is known.
class BrowserLauncher {
  public:
    /// Told when full screen is confirmed. Main thread.
    std::weak_ptr<FullscreenObserver> windowMonitor;

    /// The process that owns the meeting window. Any thread.
    std::optional<ProcessIdentifier> browserPID() const;

    /// Whether the meeting window is known to be in full screen. Any thread.
    bool isConfirmedFullscreen() const;

    /// Opens the meeting. Blocks the calling thread for seconds: never on the main thread.
    void launch(const std::string& meetURL);

    /// One attempt at full screen. Main thread.
    void attemptFullscreen();
    /// Main thread or the browser kill's.
    void cancelFullscreenRetry();
    /// Main thread.
    void bringToFront();
    /// Takes over the browser's new process. Main thread.
    void adoptRunningApplication(const std::shared_ptr<RunningApplication>& application);

    /// Gives the browser back at the end of a session. Main thread; blocks for at most about 2.2 seconds.
    void closeBrowser();
};

}  // namespace vantrel
