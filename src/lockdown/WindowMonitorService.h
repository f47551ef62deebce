#pragma once

#include <functional>
#include <memory>
#include <string>

#include "browser/BrowserLauncher.h"
#include "browser/FullscreenObserver.h"
#include "lockdown/SessionEndReason.h"

namespace vantrel {

/// Watches the browser that carries the meeting. Main thread. Its checks are still to come: monitoring does nothing.
class WindowMonitorService : public FullscreenObserver {
  public:
    /// The meeting link, for whoever looks at the monitor.
    std::string authorizedMeetURL;

    /// Hears of a focus taken by another application. Main thread; set before the start.
    std::function<void(const std::string& detail)> onViolation;
    /// Hears that the session is over, at most once for each start. Main thread; set before the start.
    std::function<void(SessionEndReason)> onSessionEnded;

    void startMonitoring(const std::shared_ptr<BrowserLauncher>& launcher);
    void stopMonitoring();

    void setFullscreenConfirmed(bool confirmed) override;

  private:
    bool fullscreenConfirmed_ = false;
};

}  // namespace vantrel
