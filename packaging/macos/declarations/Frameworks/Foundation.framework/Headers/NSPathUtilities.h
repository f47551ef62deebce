// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

FOUNDATION_EXPORT NSString* NSHomeDirectory(void);

NS_ASSUME_NONNULL_END
