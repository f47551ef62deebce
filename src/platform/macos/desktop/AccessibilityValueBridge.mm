#include "platform/macos/desktop/AccessibilityValueBridge.h"

#include "platform/macos/desktop/MacAccessibility.h"

namespace vantrel::macos {

namespace {

using Element = std::shared_ptr<AccessibilityElement>;

bool isOfType(CFTypeRef object, CFTypeID type) {
    return object != nullptr && CFGetTypeID(object) == type;
}

Element elementOf(CFTypeRef object) {
    const auto element = static_cast<AXUIElementRef>(object);
    return std::make_shared<MacAccessibilityElement>(CFReference<AXUIElementRef>::borrowed(element));
}

// Members that are not elements are left out.
std::vector<Element> elementsOf(CFArrayRef array) {
    std::vector<Element> elements;
    const CFIndex count = CFArrayGetCount(array);
    for (CFIndex index = 0; index < count; ++index) {
        CFTypeRef member = CFArrayGetValueAtIndex(array, index);
        if (isOfType(member, AXUIElementGetTypeID())) elements.push_back(elementOf(member));
    }
    return elements;
}

AccessibilityValue geometryOf(AXValueRef value) {
    CGPoint point{};
    CGSize size{};
    const AXValueType type = AXValueGetType(value);
    if (type == kAXValueTypeCGPoint && AXValueGetValue(value, type, &point)) return Point{point.x, point.y};
    if (type == kAXValueTypeCGSize && AXValueGetValue(value, type, &size)) return Size{size.width, size.height};
    return std::monostate{};
}

}  // namespace

AccessibilityValue accessibilityValue(CFTypeRef object) {
    if (isOfType(object, CFBooleanGetTypeID())) {
        return static_cast<bool>(CFBooleanGetValue(static_cast<CFBooleanRef>(object)));
    }
    if (isOfType(object, AXUIElementGetTypeID())) return elementOf(object);
    if (isOfType(object, AXValueGetTypeID())) return geometryOf(static_cast<AXValueRef>(object));
    if (isOfType(object, CFArrayGetTypeID())) return elementsOf(static_cast<CFArrayRef>(object));
    return std::monostate{};
}

CFReference<CFTypeRef> accessibilityObject(const AccessibilityValue& value) {
    if (const bool* boolean = std::get_if<bool>(&value)) {
        return CFReference<CFTypeRef>::borrowed(*boolean ? kCFBooleanTrue : kCFBooleanFalse);
    }
    if (const auto* point = std::get_if<Point>(&value)) {
        const CGPoint position{point->x, point->y};
        return CFReference<CFTypeRef>::created(AXValueCreate(kAXValueTypeCGPoint, &position));
    }
    if (const auto* size = std::get_if<Size>(&value)) {
        const CGSize extent{size->width, size->height};
        return CFReference<CFTypeRef>::created(AXValueCreate(kAXValueTypeCGSize, &extent));
    }
    return {};
}

}  // namespace vantrel::macos
