#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "lockdown/WindowMonitorService.h"
#include "tests/browser/BrowserTest.h"

namespace vantrel {

/// A monitor on a virtual Mac with a display of 1440 × 900 points, and what it tells.
class MonitorTest : public BrowserTest {
  protected:
    static constexpr const char* started = "[MONITOR] Monitoraggio avviato";
    static constexpr const char* stopped = "[MONITOR] Monitoraggio fermato";

    void TearDown() override;

    /// Chrome is open on the meeting in confirmed full screen; nothing monitors it yet.
    void openInFullScreen();
    /// Chrome is open on the meeting in a window that fills the display below the menu bar; no attempt at full screen
    /// is pending.
    void openInWindow();
    /// The launcher knows no browser and no process.
    void openNothing();

    /// One that is not started and has nobody to tell.
    std::shared_ptr<WindowMonitorService> makeMonitor(Bundle& mainBundle);
    std::shared_ptr<WindowMonitorService> makeMonitor() { return makeMonitor(computer().mainBundle); }
    /// Makes the monitor and starts it: a tick comes 1.5 seconds later and every 1.5 seconds from then on.
    void startMonitor();
    void stopMonitor();
    void releaseMonitor();
    /// Time passes until just after the next tick, and the one after, …
    void runTicks(int count = 1);

    WindowMonitorService& monitor() { return *service_; }
    /// Without the two lines of its start.
    std::vector<std::string> monitorLines() const;
    /// The details it was told.
    const std::vector<std::string>& violations() const { return violations_; }
    const std::vector<SessionEndReason>& ends() const { return ends_; }

    ProcessIdentifier chrome() { return *launcher().browserPID(); }
    std::int64_t window() { return mac().desktop().windowsOf(chrome()).at(0).number; }
    virtualmac::AccessibilityFaults& faults() { return mac().accessibility().faults(); }
    /// Another application, with a window, comes to the front.
    ProcessIdentifier bringForward(const std::string& name, const std::string& bundleIdentifier);
    /// "ATTRIBUTE=VALUE" of what was written.
    std::vector<std::string> writes() const;

  private:
    std::shared_ptr<WindowMonitorService> service_;
    std::vector<std::string> violations_;
    std::vector<SessionEndReason> ends_;
};

}  // namespace vantrel
