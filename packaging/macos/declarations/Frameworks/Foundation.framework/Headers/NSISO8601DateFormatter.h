// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSFormatter.h>

@class NSDate;

NS_ASSUME_NONNULL_BEGIN

API_AVAILABLE(macos(10.12))
@interface NSISO8601DateFormatter : NSFormatter
- (instancetype)init;
- (NSString*)stringFromDate:(NSDate*)date;
@end

NS_ASSUME_NONNULL_END
