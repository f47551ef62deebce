#include "platform/macos/desktop/AccessibilityTimeout.h"

#include <ApplicationServices/ApplicationServices.h>

#include <atomic>

#include "platform/macos/bridge/CFReference.h"
#include "platform/portable/UnansweredCalls.h"

namespace vantrel::macos {

namespace {

std::atomic<int> living = 0;
std::atomic<bool> insisting = false;

// Never destroyed: other threads may still ask while the process exits.
UnansweredCalls& unansweredCalls() {
    static UnansweredCalls& calls = *new UnansweredCalls;
    return calls;
}

// The timeout of the system-wide element applies to every element without its own. 0 is the system's default.
void limitCalls(double seconds) {
    const auto systemWide = CFReference<AXUIElementRef>::created(AXUIElementCreateSystemWide());
    if (systemWide) AXUIElementSetMessagingTimeout(systemWide.get(), static_cast<float>(seconds));
}

}  // namespace

AccessibilityTimeout::AccessibilityTimeout() {
    if (++living == 1) limitCalls(limitedAccessibilityTimeout);
    insisting = false;
}

AccessibilityTimeout::~AccessibilityTimeout() {
    if (--living == 0) limitCalls(0);
    insisting = false;
}

void AccessibilityTimeout::insist() {
    insisting = true;
}

bool AccessibilityTimeout::insists() {
    return insisting;
}

bool AccessibilityTimeout::refuses(ProcessIdentifier process, double uptime) {
    return living > 0 && !insisting && unansweredCalls().refuses(process, uptime);
}

// An application that is gone fails at once, with the same error as one that does not answer.
void AccessibilityTimeout::noteFailure(ProcessIdentifier process, double seconds, double uptime) {
    constexpr double nearlyAll = 0.9;
    if (seconds >= nearlyAll * limitedAccessibilityTimeout) unansweredCalls().note(process, uptime);
}

}  // namespace vantrel::macos
