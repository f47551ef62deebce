#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "lockdown/WindowMonitorService.h"
#include "tests/browser/BrowserTest.h"

namespace vantrel {

/// A monitor on a virtual Mac with a display of 1440 × 900 points. Records what the monitor reports.
class MonitorTest : public BrowserTest {
  protected:
    static constexpr const char* started = "[MONITOR] Monitoraggio avviato";
    static constexpr const char* stopped = "[MONITOR] Monitoraggio fermato";

    void TearDown() override;

    /// Opens the meeting in Chrome in confirmed full screen. No monitor runs yet.
    void openInFullScreen();
    /// Opens the meeting in Chrome in a window that fills the display below the menu bar. No attempt at full screen is
    /// pending.
    void openInWindow();
    /// The launcher knows no browser and no process.
    void openNothing();

    /// A monitor that is not started and has no callbacks.
    std::shared_ptr<WindowMonitorService> makeMonitor(Bundle& mainBundle);
    std::shared_ptr<WindowMonitorService> makeMonitor() { return makeMonitor(computer().mainBundle); }
    /// Creates the monitor and starts it. Ticks follow every 1.5 seconds.
    void startMonitor();
    void stopMonitor();
    void releaseMonitor();
    /// Lets time pass until just after the next `count` ticks.
    void runTicks(int count = 1);

    WindowMonitorService& monitor() { return *service_; }
    /// Without the two lines of its start.
    std::vector<std::string> monitorLines() const;
    /// The details of the reported violations.
    const std::vector<std::string>& violations() const { return violations_; }
    const std::vector<SessionEndReason>& ends() const { return ends_; }

    ProcessIdentifier chrome() { return *launcher().browserPID(); }
    std::int64_t window() { return mac().desktop().windowsOf(chrome()).at(0).number; }
    virtualmac::AccessibilityFaults& faults() { return mac().accessibility().faults(); }
    /// Another application, with a window, comes to the front.
    ProcessIdentifier bringForward(const std::string& name, const std::string& bundleIdentifier);
    /// The attributes written, as "ATTRIBUTE=VALUE".
    std::vector<std::string> writes() const;

  private:
    std::shared_ptr<WindowMonitorService> service_;
    std::vector<std::string> violations_;
    std::vector<SessionEndReason> ends_;
};

}  // namespace vantrel
