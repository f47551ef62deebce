#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <set>

#include "platform/desktop/Accessibility.h"
#include "platform/portable/UnansweredCalls.h"
#include "platform/virtual/apps/VirtualProcessLauncher.h"
#include "platform/virtual/desktop/AccessibilityFaults.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/system/VirtualAccessibilityTrust.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// The elements of the other applications, with the desktop's windows. An application has "AXWindows", front to back
/// and on all Spaces, and "AXFocusedWindow". A window has "AXFullScreen", "AXPosition", "AXSize" and "AXMinimized",
/// which can be written, and "AXTitle" and "AXCloseButton". A close button has the action "AXPress".
///
/// "AXFullScreen" becomes true when the transition to full screen has ended, and false when the transition back has
/// ended. During a transition, writes are accepted and do nothing. So are position and size for a window in full
/// screen. An application's "AXFrontmost" can be read, and brings it to the front when it is written.
class VirtualAccessibility final : public Accessibility {
  public:
    VirtualAccessibility(Engine& engine, VirtualDesktop& desktop, const VirtualProcessLauncher& processes,
                         const VirtualAccessibilityTrust& trust)
        : engine_(engine), desktop_(desktop), processes_(processes), trust_(trust) {}

    std::shared_ptr<AccessibilityElement> application(ProcessIdentifier process) const override;
    [[nodiscard]] std::unique_ptr<AccessibilityTimeLimit> limitTime() override;

    /// The lower level of limitTime(), as in the system: it knows no pauses. Seconds; 0 is the system's default.
    void setMessagingTimeout(double seconds);

    /// Set once, before the Mac starts. Called when the client has been refused a call for want of the permission.
    std::function<void()> onDenied = [] {};

    /// Driver-facing, any thread.
    AccessibilityFaults& faults() { return faults_; }
    /// The application does not answer: a call waits until it does again, at most for the timeout that holds when the
    /// call begins.
    void setUnresponsive(ProcessIdentifier process, bool unresponsive);

  private:
    class Element;
    class ApplicationElement;
    class WindowElement;
    class CloseButtonElement;
    class TimeLimit;

    /// The error if the process cannot be asked, or success, after a wait if necessary.
    AccessibilityError reach(ProcessIdentifier process) const;

    Engine& engine_;
    VirtualDesktop& desktop_;
    const VirtualProcessLauncher& processes_;
    const VirtualAccessibilityTrust& trust_;
    mutable AccessibilityFaults faults_;
    std::atomic<double> timeout_ = accessibilityTimeout;
    std::atomic<bool> pauses_ = false;
    std::atomic<bool> insists_ = false;
    mutable UnansweredCalls unanswered_;
    /// Guarded by the scheduler's mutex.
    std::set<ProcessIdentifier> unresponsive_;
};

}  // namespace vantrel::virtualmac
