#include "platform/macos/MacComputer.h"

#include "platform/macos/MacAccessibility.h"
#include "platform/macos/MacAccessibilityTrust.h"
#include "platform/macos/MacAlerts.h"
#include "platform/macos/MacApplication.h"
#include "platform/macos/MacApplicationOpener.h"
#include "platform/macos/MacBundle.h"
#include "platform/macos/MacCaptureAuthorization.h"
#include "platform/macos/MacClock.h"
#include "platform/macos/MacDispatch.h"
#include "platform/macos/MacFileManager.h"
#include "platform/macos/MacFrontmostApplication.h"
#include "platform/macos/MacISO8601DateFormatter.h"
#include "platform/macos/MacJSON.h"
#include "platform/macos/MacKeyboardTaps.h"
#include "platform/macos/MacLog.h"
#include "platform/macos/MacOverlays.h"
#include "platform/macos/MacProcessLauncher.h"
#include "platform/macos/MacRunLoop.h"
#include "platform/macos/MacRunningApplications.h"
#include "platform/macos/MacScreens.h"
#include "platform/macos/MacSpaces.h"
#include "platform/macos/MacStatusBar.h"
#include "platform/macos/MacThreads.h"
#include "platform/macos/MacURLSession.h"
#include "platform/macos/MacURLs.h"
#include "platform/macos/MacUnicodeText.h"
#include "platform/macos/MacUserDefaults.h"
#include "platform/macos/MacWindowList.h"
#include "platform/macos/MacWindows.h"
#include "platform/macos/MacWorkspace.h"

namespace vantrel::macos {

// The application comes first: screens and windows need the connection to the window server that is made with it.
struct MacComputer::Parts {
    MacApplication application;
    MacAlerts alerts;
    MacWindows windows;
    MacStatusBar statusBar;
    MacScreens screens;
    MacSpaces spaces;
    MacOverlays overlays;
    MacKeyboardTaps keyboardTaps;
    MacWindowList windowList;
    MacWorkspace workspace;
    MacApplicationOpener applicationOpener;
    MacFrontmostApplication frontmostApplication;
    MacRunningApplications runningApplications;
    MacProcessLauncher processLauncher;
    MacAccessibility accessibility;
    MacAccessibilityTrust accessibilityTrust;
    MacCaptureAuthorization captureAuthorization;
    MacDispatch dispatch;
    MacRunLoop mainRunLoop;
    MacThreads threads;
    MacClock clock;
    MacLog log;
    MacUserDefaults userDefaults;
    MacURLs urls;
    MacURLSession urlSession;
    MacJSON json;
    MacUnicodeText unicode;
    MacISO8601DateFormatter dates;
    MacFileManager files;
    MacBundle mainBundle;
};

MacComputer::MacComputer() : parts_(std::make_unique<Parts>()) {}

MacComputer::~MacComputer() = default;

Computer MacComputer::computer() {
    Parts& parts = *parts_;
    return {.application = parts.application,
            .alerts = parts.alerts,
            .windows = parts.windows,
            .statusBar = parts.statusBar,
            .screens = parts.screens,
            .spaces = parts.spaces,
            .overlays = parts.overlays,
            .keyboardTaps = parts.keyboardTaps,
            .windowList = parts.windowList,
            .workspace = parts.workspace,
            .applicationOpener = parts.applicationOpener,
            .frontmostApplication = parts.frontmostApplication,
            .runningApplications = parts.runningApplications,
            .processLauncher = parts.processLauncher,
            .accessibility = parts.accessibility,
            .accessibilityTrust = parts.accessibilityTrust,
            .captureAuthorization = parts.captureAuthorization,
            .dispatch = parts.dispatch,
            .mainRunLoop = parts.mainRunLoop,
            .threads = parts.threads,
            .clock = parts.clock,
            .log = parts.log,
            .userDefaults = parts.userDefaults,
            .urls = parts.urls,
            .urlSession = parts.urlSession,
            .json = parts.json,
            .unicode = parts.unicode,
            .dates = parts.dates,
            .files = parts.files,
            .mainBundle = parts.mainBundle};
}

}  // namespace vantrel::macos
