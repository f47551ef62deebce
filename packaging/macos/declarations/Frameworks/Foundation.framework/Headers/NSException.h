// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

__attribute__((objc_exception))
@interface NSException : NSObject<NSCopying>
@property(readonly, copy) NSExceptionName name;
@property(nullable, readonly, copy) NSString* reason;
@end

NS_ASSUME_NONNULL_END
