#pragma once

#include "platform/Accessibility.h"
#include "platform/AccessibilityTrust.h"
#include "platform/Alerts.h"
#include "platform/Application.h"
#include "platform/ApplicationOpener.h"
#include "platform/Bundle.h"
#include "platform/CaptureAuthorization.h"
#include "platform/Clock.h"
#include "platform/Dispatch.h"
#include "platform/FileManager.h"
#include "platform/FrontmostApplication.h"
#include "platform/ISO8601DateFormatter.h"
#include "platform/JSON.h"
#include "platform/KeyboardTap.h"
#include "platform/Log.h"
#include "platform/Overlay.h"
#include "platform/ProcessLauncher.h"
#include "platform/RunLoop.h"
#include "platform/RunningApplications.h"
#include "platform/Screens.h"
#include "platform/Spaces.h"
#include "platform/StatusBar.h"
#include "platform/Threads.h"
#include "platform/URLSession.h"
#include "platform/URLs.h"
#include "platform/UnicodeText.h"
#include "platform/UserDefaults.h"
#include "platform/Window.h"
#include "platform/WindowList.h"
#include "platform/Workspace.h"

namespace vantrel {

/// A whole computer, for those who hand its capabilities on. What each reference stands for, on which threads it may be
/// used and how it fails is said in its own header. A computer outlives everything that was given one of its
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
