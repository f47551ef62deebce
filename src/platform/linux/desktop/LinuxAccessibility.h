#pragma once

#include "platform/desktop/Accessibility.h"

namespace vantrel::linuxdesktop {

class FullScreenDesktops;
class X11Connection;
class X11Windows;
class X11WindowSurvey;

/// What elements work with; it outlives them.
struct AccessibilityDependencies {
    X11Connection& connection;
    X11Windows& windows;
    X11WindowSurvey& survey;
    FullScreenDesktops& fullScreen;
};

/// The attributes that macOS tells of an application's windows, read from and written to X11 windows through the window
/// manager. It needs no answer of the application itself and so never waits for one; what it asks for shows within some
/// 20 ms. Any thread.
class LinuxAccessibility final : public Accessibility {
  public:
    explicit LinuxAccessibility(const AccessibilityDependencies& dependencies) : dependencies_(dependencies) {}

    std::shared_ptr<AccessibilityElement> application(ProcessIdentifier process) const override;

  private:
    const AccessibilityDependencies dependencies_;
};

}  // namespace vantrel::linuxdesktop
