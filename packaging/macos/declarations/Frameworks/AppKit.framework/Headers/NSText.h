// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

// On Intel, Rosetta included, the two are the other way round than on Apple silicon, whose values are those of iOS.
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
