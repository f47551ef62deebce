// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSCharacterSet : NSObject <NSCopying, NSMutableCopying>
@end

@interface NSCharacterSet (NSURLUtilities)
@property(class, readonly, copy) NSCharacterSet* URLQueryAllowedCharacterSet API_AVAILABLE(macos(10.9));
@end

NS_ASSUME_NONNULL_END
