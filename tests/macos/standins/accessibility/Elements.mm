#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include <memory>
#include <utility>
#include <variant>
#include <vector>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/accessibility/FocusQuestion.h"
#include "tests/macos/standins/corefoundation/Types.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Classes.h"

using namespace vantrel::standins;

CFStringRef kAXTrustedCheckOptionPrompt = (__bridge CFStringRef) @"AXTrustedCheckOptionPrompt";

/// Without an element of the virtual Mac it is the system-wide element, which knows the application in front.
@interface VantrelElement : NSObject <VantrelTyped>
@end

@implementation VantrelElement {
  @public
    std::shared_ptr<vantrel::AccessibilityElement> _element;
    pid_t _process;
}

- (CFTypeID)vantrel_type {
    return typeOfElements;
}

@end

@interface VantrelAccessibilityValue : NSObject <VantrelTyped>
@end

@implementation VantrelAccessibilityValue {
  @public
    AXValueType _type;
    CGPoint _point;
    CGSize _size;
}

- (CFTypeID)vantrel_type {
    return typeOfAccessibilityValues;
}

@end

namespace {

using Element = std::shared_ptr<vantrel::AccessibilityElement>;

VantrelElement* elementOf(AXUIElementRef reference) {
    return (__bridge VantrelElement*)(CFTypeRef)reference;
}

VantrelElement* makeElement(Element element, pid_t process) {
    VantrelElement* made = [[VantrelElement alloc] init];
    made->_element = std::move(element);
    made->_process = process;
    return made;
}

VantrelAccessibilityValue* valueOf(AXValueRef reference) {
    return (__bridge VantrelAccessibilityValue*)(CFTypeRef)reference;
}

id geometryOf(AXValueType type, const void* value) {
    return (__bridge_transfer id)AXValueCreate(type, value);
}

/// A value as the program gets it. A type that the virtual Mac does not report becomes a text.
id objectOf(const vantrel::AccessibilityValue& value, pid_t process) {
    if (const bool* boolean = std::get_if<bool>(&value)) return [NSNumber numberWithBool:*boolean];
    if (const auto* point = std::get_if<vantrel::Point>(&value)) {
        const CGPoint position = CGPointMake(point->x, point->y);
        return geometryOf(kAXValueTypeCGPoint, &position);
    }
    if (const auto* size = std::get_if<vantrel::Size>(&value)) {
        const CGSize extent = CGSizeMake(size->width, size->height);
        return geometryOf(kAXValueTypeCGSize, &extent);
    }
    if (const auto* element = std::get_if<Element>(&value)) return makeElement(*element, process);
    if (const auto* elements = std::get_if<std::vector<Element>>(&value)) {
        NSMutableArray* array = [NSMutableArray arrayWithCapacity:elements->size()];
        for (const Element& each : *elements) [array addObject:makeElement(each, process)];
        return array;
    }
    return @"";
}

vantrel::AccessibilityValue valueOfObject(CFTypeRef object) {
    if (CFGetTypeID(object) == CFBooleanGetTypeID()) {
        return static_cast<bool>(CFBooleanGetValue(static_cast<CFBooleanRef>(object)));
    }
    if (CFGetTypeID(object) != AXValueGetTypeID()) return std::monostate{};
    VantrelAccessibilityValue* value = valueOf(static_cast<AXValueRef>(object));
    if (value->_type == kAXValueTypeCGPoint) return vantrel::Point{value->_point.x, value->_point.y};
    return vantrel::Size{value->_size.width, value->_size.height};
}

}  // namespace

extern "C" {

Boolean AXIsProcessTrusted() {
    return mac().parts().accessibilityTrust.isProcessTrusted() ? 1 : 0;
}

Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options) {
    id prompt = ((__bridge NSDictionary*)options)[(__bridge NSString*)kAXTrustedCheckOptionPrompt];
    vantrel::AccessibilityTrust& trust = mac().parts().accessibilityTrust;
    const bool asks = [prompt isKindOfClass:[NSNumber class]] && [(NSNumber*)prompt boolValue];
    return (asks ? trust.isProcessTrustedWithPrompt() : trust.isProcessTrusted()) ? 1 : 0;
}

CFTypeID AXUIElementGetTypeID() {
    return typeOfElements;
}

// Threads that call this may have no pool.
AXUIElementRef AXUIElementCreateApplication(pid_t pid) {
    @autoreleasepool {
        VantrelElement* element = makeElement(mac().parts().accessibility.application(pid), pid);
        return (__bridge_retained AXUIElementRef)(id)element;
    }
}

AXUIElementRef AXUIElementCreateSystemWide() {
    @autoreleasepool {
        VantrelElement* element = makeElement(nullptr, 0);
        return (__bridge_retained AXUIElementRef)(id)element;
    }
}

// On the system-wide element it is the timeout of every element. Another element's own one is not stood in for.
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float seconds) {
    if (elementOf(element)->_element != nullptr) fatal("the timeout of one element");
    if (seconds < 0) return kAXErrorIllegalArgument;
    mac().accessibility().setMessagingTimeout(seconds);
    return kAXErrorSuccess;
}

AXError AXUIElementGetPid(AXUIElementRef element, pid_t* pid) {
    if (!elementOf(element)->_element) return kAXErrorIllegalArgument;
    *pid = elementOf(element)->_process;
    return kAXErrorSuccess;
}

static AXError copyFocus(NSString* attribute, CFTypeRef* value) {
    if (![attribute isEqualToString:@"AXFocusedApplication"]) fatal("another attribute of the system-wide element");
    if (!mac().trust().isTrusted()) return kAXErrorAPIDisabled;
    const auto front = mac().parts().frontmostApplication.frontmostApplication();
    if (!front) return kAXErrorNoValue;
    const pid_t process = front->processIdentifier();
    const Element element = mac().parts().accessibility.application(process);
    if (focusIsAskedOfTheFront()) {
        const auto answer = element->attribute("AXFrontmost");
        if (const auto* error = std::get_if<vantrel::AccessibilityError>(&answer)) return static_cast<AXError>(*error);
    }
    *value = (__bridge_retained CFTypeRef)makeElement(element, process);
    return kAXErrorSuccess;
}

AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef* value) {
    if (!elementOf(element)->_element) return copyFocus((__bridge NSString*)attribute, value);
    const auto answer = elementOf(element)->_element->attribute(bytesOf((__bridge NSString*)attribute));
    if (const auto* error = std::get_if<vantrel::AccessibilityError>(&answer)) return static_cast<AXError>(*error);
    id object = objectOf(std::get<vantrel::AccessibilityValue>(answer), elementOf(element)->_process);
    *value = (__bridge_retained CFTypeRef)object;
    return kAXErrorSuccess;
}

AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef value) {
    return static_cast<AXError>(
        elementOf(element)->_element->setAttribute(bytesOf((__bridge NSString*)attribute), valueOfObject(value)));
}

AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action) {
    return static_cast<AXError>(elementOf(element)->_element->performAction(bytesOf((__bridge NSString*)action)));
}

CFTypeID AXValueGetTypeID() {
    return typeOfAccessibilityValues;
}

AXValueRef AXValueCreate(AXValueType type, const void* value) {
    VantrelAccessibilityValue* made = [[VantrelAccessibilityValue alloc] init];
    made->_type = type;
    if (type == kAXValueTypeCGPoint) made->_point = *static_cast<const CGPoint*>(value);
    if (type == kAXValueTypeCGSize) made->_size = *static_cast<const CGSize*>(value);
    return (__bridge_retained AXValueRef)(id)made;
}

AXValueType AXValueGetType(AXValueRef value) {
    return valueOf(value)->_type;
}

Boolean AXValueGetValue(AXValueRef value, AXValueType type, void* result) {
    VantrelAccessibilityValue* const kept = valueOf(value);
    if (kept->_type != type) return 0;
    if (type == kAXValueTypeCGPoint) *static_cast<CGPoint*>(result) = kept->_point;
    if (type == kAXValueTypeCGSize) *static_cast<CGSize*>(result) = kept->_size;
    return 1;
}

}  // extern "C"
