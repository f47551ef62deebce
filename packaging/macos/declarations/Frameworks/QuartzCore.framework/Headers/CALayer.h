// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface CALayer : NSObject
@property(nullable) CGColorRef backgroundColor;
@end

NS_ASSUME_NONNULL_END
