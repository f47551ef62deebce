// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSBezelStyle) {
    NSBezelStyleRounded API_DEPRECATED("Use NSBezelStylePush.", macos(10.0, 27.0)) = 1,
};

NS_ASSUME_NONNULL_END
