#pragma once

#include <memory>

#include "platform/apps/RunningApplications.h"
#include "platform/desktop/Accessibility.h"
#include "platform/threads/Clock.h"
#include "platform/threads/Threads.h"

namespace vantrel {

/// The two ways of giving a browser back. Main thread, which they block. Nothing is reported: what cannot be closed
/// stays open.
class BrowserShutdown {
  public:
    BrowserShutdown(const Accessibility& accessibility, const Clock& clock, Threads& threads)
        : accessibility_(accessibility), clock_(clock), threads_(threads) {}

    /// Closes every window that the application shows to Accessibility, full-screen ones after half a second outside
    /// of full screen. The process goes on.
    void closeWindows(ProcessIdentifier process) const;

    /// Asks the application to end, and forces it after about 2 seconds of uptime. Without one it waits all the same.
    void terminate(const std::shared_ptr<RunningApplication>& application) const;

  private:
    const Accessibility& accessibility_;
    const Clock& clock_;
    Threads& threads_;
};

}  // namespace vantrel
