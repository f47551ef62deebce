#pragma once

#include "platform/desktop/Accessibility.h"

namespace vantrel::linuxdesktop {

class FullScreenDesktops;
class X11Connection;
class X11Windows;
class X11WindowSurvey;

/// What elements need. It outlives them.
struct AccessibilityDependencies {
    X11Connection& connection;
    X11Windows& windows;
    X11WindowSurvey& survey;
    FullScreenDesktops& fullScreen;
};

/// The window attributes that macOS has, read from and written to X11 windows through the window manager. It never asks
/// the application itself, so it never waits for one. Requests take effect within some 20 ms. Any thread.
class LinuxAccessibility final : public Accessibility {
  public:
    explicit LinuxAccessibility(const AccessibilityDependencies& dependencies) : dependencies_(dependencies) {}

    std::shared_ptr<AccessibilityElement> application(ProcessIdentifier process) const override;
    [[nodiscard]] std::unique_ptr<AccessibilityTimeLimit> limitTime() override;

  private:
    const AccessibilityDependencies dependencies_;
};

}  // namespace vantrel::linuxdesktop
