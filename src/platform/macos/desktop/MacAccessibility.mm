#include "platform/macos/desktop/MacAccessibility.h"

#import <Foundation/Foundation.h>

#include "platform/macos/bridge/Text.h"
#include "platform/macos/desktop/AccessibilityLoss.h"
#include "platform/macos/desktop/AccessibilityTimeout.h"
#include "platform/macos/desktop/AccessibilityValueBridge.h"
#include "platform/macos/threads/MacClock.h"
#include "platform/macos/threads/MainThread.h"
#include "platform/macos/threads/MainThreadWatch.h"

namespace vantrel::macos {

static_assert(accessibilitySuccess == kAXErrorSuccess && accessibilityFailure == kAXErrorFailure &&
              accessibilityIllegalArgument == kAXErrorIllegalArgument &&
              accessibilityInvalidElement == kAXErrorInvalidUIElement &&
              accessibilityCannotComplete == kAXErrorCannotComplete &&
              accessibilityAttributeUnsupported == kAXErrorAttributeUnsupported &&
              accessibilityActionUnsupported == kAXErrorActionUnsupported &&
              accessibilityDisabled == kAXErrorAPIDisabled && accessibilityNoValue == kAXErrorNoValue);

namespace {

template <class Call>
AXError ask(AXUIElementRef element, Call call) {
    const MacClock clock;
    const double asked = clock.uptime();
    pid_t process = 0;
    if (AXUIElementGetPid(element, &process) != kAXErrorSuccess) return call();
    if (AccessibilityTimeout::refuses(process, asked)) return kAXErrorCannotComplete;
    const AXError error = call();
    const double answered = clock.uptime();
    if (error == kAXErrorCannotComplete) AccessibilityTimeout::noteFailure(process, answered - asked, answered);
    AccessibilityLoss::note(error);
    MainThreadWatch::noteReturn();
    return error;
}

}  // namespace

std::variant<AccessibilityValue, AccessibilityError> MacAccessibilityElement::attribute(std::string_view name) const {
    if (!element_) return AccessibilityError{kAXErrorInvalidUIElement};
    @autoreleasepool {
        NSString* text = lenientText(name);
        CFTypeRef copied = nullptr;
        const auto copy = [&] {
            return AXUIElementCopyAttributeValue(element_.get(), (__bridge CFStringRef)text, &copied);
        };
        AXError error = ask(element_.get(), copy);
        if (error == kAXErrorCannotComplete && AccessibilityTimeout::insists()) error = ask(element_.get(), copy);
        const auto value = CFReference<CFTypeRef>::copied(copied);
        if (error != kAXErrorSuccess) return AccessibilityError{error};
        return accessibilityValue(value.get());
    }
}

AccessibilityError MacAccessibilityElement::setAttribute(std::string_view name, const AccessibilityValue& value) {
    if (!element_) return kAXErrorInvalidUIElement;
    @autoreleasepool {
        const auto object = accessibilityObject(value);
        if (!object) return kAXErrorIllegalArgument;
        NSString* text = lenientText(name);
        return ask(element_.get(), [&] {
            return AXUIElementSetAttributeValue(element_.get(), (__bridge CFStringRef)text, object.get());
        });
    }
}

AccessibilityError MacAccessibilityElement::performAction(std::string_view name) {
    if (!element_) return kAXErrorInvalidUIElement;
    @autoreleasepool {
        NSString* text = lenientText(name);
        return ask(element_.get(),
                   [&] { return AXUIElementPerformAction(element_.get(), (__bridge CFStringRef)text); });
    }
}

std::shared_ptr<AccessibilityElement> MacAccessibility::application(ProcessIdentifier process) const {
    return std::make_shared<MacAccessibilityElement>(
        CFReference<AXUIElementRef>::created(AXUIElementCreateApplication(process)));
}

std::unique_ptr<AccessibilityTimeLimit> MacAccessibility::limitTime() {
    requireMainThread("limitTime");
    return std::make_unique<AccessibilityTimeout>();
}

}  // namespace vantrel::macos
