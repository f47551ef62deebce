// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObject.h>

@class NSDate;

NS_ASSUME_NONNULL_BEGIN

@interface NSFormatter : NSObject <NSCopying>
@end

@interface NSISO8601DateFormatter : NSFormatter
- (instancetype)init;
- (NSString*)stringFromDate:(NSDate*)date;
@end

NS_ASSUME_NONNULL_END
