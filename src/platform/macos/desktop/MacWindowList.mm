#include "platform/macos/desktop/MacWindowList.h"

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

#include "platform/macos/bridge/RectBridge.h"
#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

static_assert(kCGNullWindowID == 0);
static_assert(static_cast<CGWindowListOption>(WindowListOption::all) == kCGWindowListOptionAll);
static_assert(static_cast<CGWindowListOption>(WindowListOption::onScreenOnly) == kCGWindowListOptionOnScreenOnly);

namespace {

NSNumber* number(NSDictionary* entry, CFStringRef key) {
    id object = entry[(__bridge NSString*)key];
    return [object isKindOfClass:[NSNumber class]] ? object : nil;
}

std::optional<std::string> text(NSDictionary* entry, CFStringRef key) {
    return bytesOfAny(entry[(__bridge NSString*)key]);
}

std::optional<Rect> bounds(NSDictionary* entry) {
    id object = entry[(__bridge NSString*)kCGWindowBounds];
    if (![object isKindOfClass:[NSDictionary class]]) return std::nullopt;
    CGRect rect{};
    if (!CGRectMakeWithDictionaryRepresentation((__bridge CFDictionaryRef)object, &rect)) return std::nullopt;
    return rectOf(rect);
}

WindowEntry entryOf(NSDictionary* dictionary) {
    WindowEntry entry;
    if (NSNumber* value = number(dictionary, kCGWindowNumber)) entry.number = value.longLongValue;
    if (NSNumber* value = number(dictionary, kCGWindowOwnerPID)) entry.ownerPID = value.intValue;
    entry.ownerName = text(dictionary, kCGWindowOwnerName);
    entry.name = text(dictionary, kCGWindowName);
    if (NSNumber* value = number(dictionary, kCGWindowLayer)) entry.layer = value.longLongValue;
    entry.bounds = bounds(dictionary);
    if (NSNumber* value = number(dictionary, kCGWindowIsOnscreen)) entry.isOnscreen = value.boolValue;
    return entry;
}

}  // namespace

std::optional<std::vector<WindowEntry>> MacWindowList::copy(WindowListOption option) const {
    @autoreleasepool {
        NSArray* list =
            CFBridgingRelease(CGWindowListCopyWindowInfo(static_cast<CGWindowListOption>(option), kCGNullWindowID));
        if (list == nil) return std::nullopt;
        std::vector<WindowEntry> entries;
        for (id dictionary in list) {
            if (![dictionary isKindOfClass:[NSDictionary class]]) return std::nullopt;
            entries.push_back(entryOf(dictionary));
        }
        return entries;
    }
}

}  // namespace vantrel::macos
