#include "platform/macos/AccessibilityTimeout.h"

#include <ApplicationServices/ApplicationServices.h>

#include "platform/Accessibility.h"
#include "platform/macos/CFReference.h"

namespace vantrel::macos {

namespace {

int living = 0;

// The time-out of the system-wide element is that of every element which has none of its own; 0 is the system's.
void limitCalls(double seconds) {
    const auto systemWide = CFReference<AXUIElementRef>::created(AXUIElementCreateSystemWide());
    if (systemWide) AXUIElementSetMessagingTimeout(systemWide.get(), static_cast<float>(seconds));
}

}  // namespace

AccessibilityTimeout::AccessibilityTimeout() {
    if (++living == 1) limitCalls(accessibilityTimeoutUnderTap);
}

AccessibilityTimeout::~AccessibilityTimeout() {
    if (--living == 0) limitCalls(0);
}

}  // namespace vantrel::macos
