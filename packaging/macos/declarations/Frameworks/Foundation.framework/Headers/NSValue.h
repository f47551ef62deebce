// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSValue : NSObject <NSCopying>
@end

@interface NSNumber : NSValue
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithDouble:(double)value;
+ (NSNumber*)numberWithBool:(BOOL)value;
@property(readonly) int intValue;
@property(readonly) long long longLongValue;
@property(readonly) double doubleValue;
@property(readonly) BOOL boolValue;
@property(readonly, copy) NSString* stringValue;
@end

NS_ASSUME_NONNULL_END
