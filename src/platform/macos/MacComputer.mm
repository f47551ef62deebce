#include "platform/macos/MacComputer.h"

#include "platform/macos/apps/MacApplicationOpener.h"
#include "platform/macos/apps/MacBundle.h"
#include "platform/macos/apps/MacFrontmostApplication.h"
#include "platform/macos/apps/MacProcessLauncher.h"
#include "platform/macos/apps/MacRunningApplications.h"
#include "platform/macos/apps/MacWorkspace.h"
#include "platform/macos/desktop/MacAccessibility.h"
#include "platform/macos/desktop/MacScreens.h"
#include "platform/macos/desktop/MacSpaces.h"
#include "platform/macos/desktop/MacWindowList.h"
#include "platform/macos/keyboard/MacKeyboardTaps.h"
#include "platform/macos/network/MacJSONSerialization.h"
#include "platform/macos/network/MacURLSession.h"
#include "platform/macos/network/MacURLs.h"
#include "platform/macos/system/MacAccessibilityTrust.h"
#include "platform/macos/system/MacCaptureAuthorization.h"
#include "platform/macos/system/MacFileManager.h"
#include "platform/macos/system/MacISO8601DateFormatter.h"
#include "platform/macos/system/MacLog.h"
#include "platform/macos/system/MacUnicodeText.h"
#include "platform/macos/system/MacUserDefaults.h"
#include "platform/macos/threads/MacClock.h"
#include "platform/macos/threads/MacDispatch.h"
#include "platform/macos/threads/MacRunLoop.h"
#include "platform/macos/threads/MacThreads.h"
#include "platform/macos/ui/MacAlerts.h"
#include "platform/macos/ui/MacApplication.h"
#include "platform/macos/ui/MacOverlays.h"
#include "platform/macos/ui/MacStatusBar.h"
#include "platform/macos/ui/MacWindows.h"
#include "platform/portable/ComputerOf.h"

namespace vantrel::macos {

// The application comes first: screens and windows need its connection to the window server.
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
    MacJSONSerialization json;
    MacUnicodeText unicode;
    MacISO8601DateFormatter dates;
    MacFileManager files;
    MacBundle mainBundle;
};

MacComputer::MacComputer() : parts_(std::make_unique<Parts>()) {}

MacComputer::~MacComputer() = default;

Computer MacComputer::computer() {
    return computerOf(*parts_);
}

}  // namespace vantrel::macos
