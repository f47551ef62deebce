#pragma once

#include "browser/BrowserLauncher.h"
#include "platform/apps/ProcessLauncher.h"
#include "platform/apps/RunningApplications.h"
#include "platform/system/Log.h"
#include "platform/threads/Clock.h"
#include "platform/threads/Threads.h"

namespace vantrel {

/// Ends the browser of a participant who has left the meeting. Runs on a background queue and blocks its thread for at
/// most about 1.6 seconds.
class BrowserKill {
  public:
    BrowserKill(RunningApplications& applications, ProcessLauncher& processes, Threads& threads, Clock& clock, Log& log)
        : applications_(applications), processes_(processes), threads_(threads), clock_(clock), log_(log) {}

    void run(const std::weak_ptr<BrowserLauncher>& launcher) const;

  private:
    void kill(ProcessIdentifier process) const;
    void waitForEnd(ProcessIdentifier process) const;

    RunningApplications& applications_;
    ProcessLauncher& processes_;
    Threads& threads_;
    Clock& clock_;
    Log& log_;
};

}  // namespace vantrel
