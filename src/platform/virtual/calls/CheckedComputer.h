#pragma once

#include "platform/Computer.h"
#include "platform/virtual/calls/CheckedApps.h"
#include "platform/virtual/calls/CheckedDesktop.h"
#include "platform/virtual/calls/CheckedSystem.h"
#include "platform/virtual/calls/CheckedThreads.h"
#include "platform/virtual/calls/CheckedUI.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// Stands between the client and a computer: its calls go to the virtual Mac's parts, or to the macOS platform over
/// stand-ins. Before each call it lets other threads run, as the seed chooses. A call that belongs to the main thread
/// is misuse on another one, but continues. Calls that only compute or count (JSON, URLs, texts, dates, dispatch
/// groups) and the ends of timers and observations pass without that.
///
/// The computer must outlive it.
class CheckedComputer {
  public:
    CheckedComputer(Engine& engine, const Computer& computer);
    CheckedComputer(const CheckedComputer&) = delete;
    CheckedComputer& operator=(const CheckedComputer&) = delete;

    Computer& computer() { return checked_; }

  private:
    CheckedApplication application_;
    CheckedAlerts alerts_;
    CheckedWindows windows_;
    CheckedStatusBar statusBar_;
    CheckedScreens screens_;
    CheckedSpaces spaces_;
    CheckedOverlays overlays_;
    CheckedKeyboardTaps keyboard_;
    CheckedWindowList windowList_;
    CheckedWorkspace workspace_;
    CheckedApplicationOpener opener_;
    CheckedFrontmostApplication frontmost_;
    CheckedRunningApplications applications_;
    CheckedProcessLauncher launcher_;
    CheckedAccessibility accessibility_;
    CheckedAccessibilityTrust trust_;
    CheckedCaptureAuthorization capture_;
    CheckedDispatch dispatch_;
    CheckedRunLoop runLoop_;
    CheckedClock clock_;
    CheckedLog log_;
    CheckedUserDefaults defaults_;
    CheckedURLSession network_;
    CheckedFileManager files_;
    Computer checked_;
};

}  // namespace vantrel::virtualmac
