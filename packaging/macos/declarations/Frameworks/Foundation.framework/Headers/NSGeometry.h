// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <Foundation/NSObjCRuntime.h>

typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;

static inline NSPoint NSMakePoint(CGFloat x, CGFloat y) {
    return CGPointMake(x, y);
}
static inline NSSize NSMakeSize(CGFloat width, CGFloat height) {
    return CGSizeMake(width, height);
}
static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    return CGRectMake(x, y, width, height);
}
