#include "platform/macos/MacAccessibilityElement.h"

#import <Foundation/Foundation.h>

#include "platform/macos/AccessibilityValueBridge.h"
#include "platform/macos/Text.h"

namespace vantrel::macos {

static_assert(accessibilitySuccess == kAXErrorSuccess && accessibilityFailure == kAXErrorFailure &&
              accessibilityIllegalArgument == kAXErrorIllegalArgument &&
              accessibilityInvalidElement == kAXErrorInvalidUIElement &&
              accessibilityCannotComplete == kAXErrorCannotComplete &&
              accessibilityAttributeUnsupported == kAXErrorAttributeUnsupported &&
              accessibilityActionUnsupported == kAXErrorActionUnsupported &&
              accessibilityDisabled == kAXErrorAPIDisabled && accessibilityNoValue == kAXErrorNoValue);

std::variant<AccessibilityValue, AccessibilityError> MacAccessibilityElement::attribute(std::string_view name) const {
    if (!element_) return AccessibilityError{kAXErrorInvalidUIElement};
    @autoreleasepool {
        NSString* text = lenientText(name);
        CFTypeRef copied = nullptr;
        const AXError error = AXUIElementCopyAttributeValue(element_.get(), (__bridge CFStringRef)text, &copied);
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
        return AXUIElementSetAttributeValue(element_.get(), (__bridge CFStringRef)text, object.get());
    }
}

AccessibilityError MacAccessibilityElement::performAction(std::string_view name) {
    if (!element_) return kAXErrorInvalidUIElement;
    @autoreleasepool {
        NSString* text = lenientText(name);
        return AXUIElementPerformAction(element_.get(), (__bridge CFStringRef)text);
    }
}

}  // namespace vantrel::macos
