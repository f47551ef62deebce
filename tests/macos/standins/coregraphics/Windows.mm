#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/foundation/Text.h"

using namespace vantrel::standins;

const CFStringRef kCGWindowNumber = (__bridge CFStringRef) @"kCGWindowNumber";
const CFStringRef kCGWindowLayer = (__bridge CFStringRef) @"kCGWindowLayer";
const CFStringRef kCGWindowBounds = (__bridge CFStringRef) @"kCGWindowBounds";
const CFStringRef kCGWindowOwnerPID = (__bridge CFStringRef) @"kCGWindowOwnerPID";
const CFStringRef kCGWindowOwnerName = (__bridge CFStringRef) @"kCGWindowOwnerName";
const CFStringRef kCGWindowName = (__bridge CFStringRef) @"kCGWindowName";
const CFStringRef kCGWindowIsOnscreen = (__bridge CFStringRef) @"kCGWindowIsOnscreen";

namespace {

NSNumber* number(double value) {
    return [NSNumber numberWithDouble:value];
}

NSDictionary* dictionaryOf(const vantrel::Rect& rect) {
    return @{
        @"X" : number(rect.origin.x),
        @"Y" : number(rect.origin.y),
        @"Width" : number(rect.size.width),
        @"Height" : number(rect.size.height)
    };
}

NSDictionary* dictionaryOf(const vantrel::WindowEntry& entry) {
    NSMutableDictionary* made = [NSMutableDictionary dictionaryWithCapacity:7];
    if (entry.number) made[@"kCGWindowNumber"] = number(static_cast<double>(*entry.number));
    if (entry.ownerPID) made[@"kCGWindowOwnerPID"] = number(*entry.ownerPID);
    if (entry.ownerName) made[@"kCGWindowOwnerName"] = textOf(*entry.ownerName);
    if (entry.name) made[@"kCGWindowName"] = textOf(*entry.name);
    if (entry.layer) made[@"kCGWindowLayer"] = number(static_cast<double>(*entry.layer));
    if (entry.bounds) made[@"kCGWindowBounds"] = dictionaryOf(*entry.bounds);
    // Optional. Where it is not true, it may be missing as well as false.
    made[@"kCGWindowIsOnscreen"] = [NSNumber numberWithBool:entry.isOnscreen.value_or(false)];
    return made;
}

}  // namespace

extern "C" {

bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef reference, CGRect* rect) {
    NSDictionary* dictionary = (__bridge NSDictionary*)reference;
    CGFloat values[4] = {};
    NSArray* keys = @[ @"X", @"Y", @"Width", @"Height" ];
    for (NSUInteger index = 0; index < keys.count; ++index) {
        id value = dictionary[keys[index]];
        if (![value isKindOfClass:[NSNumber class]]) return false;
        values[index] = [(NSNumber*)value doubleValue];
    }
    if (rect != nullptr) *rect = CGRectMake(values[0], values[1], values[2], values[3]);
    return true;
}

CFArrayRef CGWindowListCopyWindowInfo(CGWindowListOption option, CGWindowID relativeToWindow) {
    (void)relativeToWindow;
    const auto list = mac().parts().windowList.copy(static_cast<vantrel::WindowListOption>(option));
    if (!list) return nullptr;
    NSMutableArray* entries = [NSMutableArray arrayWithCapacity:list->size()];
    for (const auto& entry : *list) [entries addObject:dictionaryOf(entry)];
    return (__bridge_retained CFArrayRef)entries;
}

}  // extern "C"
