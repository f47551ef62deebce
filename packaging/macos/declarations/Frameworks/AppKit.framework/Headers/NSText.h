// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

// On Intel, including Rosetta, these two are swapped compared with Apple silicon, which has the values of iOS.
typedef NS_ENUM(NSInteger, NSTextAlignment) {
    NSTextAlignmentLeft = 0,
#if defined(__x86_64__)
    NSTextAlignmentRight = 1,
    NSTextAlignmentCenter = 2,
#else
    NSTextAlignmentCenter = 1,
    NSTextAlignmentRight = 2,
#endif
};
