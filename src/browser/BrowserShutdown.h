#pragma once

#include <memory>

#include "platform/apps/RunningApplications.h"
#include "platform/desktop/Accessibility.h"
#include "platform/threads/Clock.h"
#include "platform/threads/Threads.h"

namespace vantrel {

/// The two ways of closing a browser. Main thread, which they block. Failures are not reported: what cannot be closed
/// stays open.
class BrowserShutdown {
  public:
    BrowserShutdown(const Accessibility& accessibility, const Clock& clock, Threads& threads)
        : accessibility_(accessibility), clock_(clock), threads_(threads) {}

    /// Closes every window that Accessibility shows. A full-screen window first leaves full screen and is closed half a
    /// second later. The process continues.
    void closeWindows(ProcessIdentifier process) const;

    /// Asks the application to end, and forces it after about 2 seconds of uptime. Waits even if there is no
    /// application.
    void terminate(const std::shared_ptr<RunningApplication>& application) const;

  private:
    const Accessibility& accessibility_;
    const Clock& clock_;
    Threads& threads_;
};

}  // namespace vantrel
