#pragma once

#include "platform/apps/ApplicationOpener.h"
#include "platform/apps/Bundle.h"
#include "platform/apps/FrontmostApplication.h"
#include "platform/apps/ProcessLauncher.h"
#include "platform/apps/RunningApplications.h"
#include "platform/apps/Workspace.h"
#include "platform/desktop/Accessibility.h"
#include "platform/desktop/Screens.h"
#include "platform/desktop/Spaces.h"
#include "platform/desktop/WindowList.h"
#include "platform/keyboard/KeyboardTap.h"
#include "platform/network/JSON.h"
#include "platform/network/URLSession.h"
#include "platform/network/URLs.h"
#include "platform/system/AccessibilityTrust.h"
#include "platform/system/CaptureAuthorization.h"
#include "platform/system/FileManager.h"
#include "platform/system/ISO8601DateFormatter.h"
#include "platform/system/Log.h"
#include "platform/system/UnicodeText.h"
#include "platform/system/UserDefaults.h"
#include "platform/threads/Clock.h"
#include "platform/threads/Dispatch.h"
#include "platform/threads/RunLoop.h"
#include "platform/threads/Threads.h"
#include "platform/ui/Alerts.h"
#include "platform/ui/Application.h"
#include "platform/ui/Overlay.h"
#include "platform/ui/StatusBar.h"
#include "platform/ui/Window.h"

namespace vantrel {

/// A whole computer, for the classes that hand its capabilities on. Each capability's header says what it stands for,
/// on which threads it may be used and how it fails. A computer outlives everything that was given one of its
/// capabilities.
struct Computer {
    Application& application;
    Alerts& alerts;
    Windows& windows;
    StatusBar& statusBar;
    Screens& screens;
    Spaces& spaces;
    Overlays& overlays;
    KeyboardTaps& keyboardTaps;
    WindowList& windowList;
    Workspace& workspace;
    ApplicationOpener& applicationOpener;
    FrontmostApplication& frontmostApplication;
    RunningApplications& runningApplications;
    ProcessLauncher& processLauncher;
    Accessibility& accessibility;
    AccessibilityTrust& accessibilityTrust;
    CaptureAuthorization& captureAuthorization;
    Dispatch& dispatch;
    RunLoop& mainRunLoop;
    Threads& threads;
    Clock& clock;
    Log& log;
    UserDefaults& userDefaults;
    URLs& urls;
    URLSession& urlSession;
    JSONSerialization& json;
    UnicodeText& unicode;
    ISO8601DateFormatter& dates;
    FileManager& files;
    Bundle& mainBundle;
};

}  // namespace vantrel
