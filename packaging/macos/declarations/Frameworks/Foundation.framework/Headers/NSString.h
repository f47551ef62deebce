// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObject.h>
#import <Foundation/NSRange.h>

@class NSData, NSError;

NS_ASSUME_NONNULL_BEGIN

typedef unsigned short unichar;
typedef NSUInteger NSStringEncoding;

NS_ENUM(NSStringEncoding){
    NSASCIIStringEncoding = 1,
    NSUTF8StringEncoding = 4,
};

@interface NSString : NSObject <NSCopying, NSMutableCopying>
@property(readonly) NSUInteger length;
- (instancetype)init;
- (nullable instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)length encoding:(NSStringEncoding)encoding;
+ (instancetype)string;
@property(nullable, readonly) const char* UTF8String NS_RETURNS_INNER_POINTER;
@property(readonly, copy) NSString* uppercaseString;
- (BOOL)isEqualToString:(NSString*)other;
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)encoding;
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)encoding allowLossyConversion:(BOOL)lossy;
@end

@interface NSMutableString : NSString
- (void)appendString:(NSString*)text;
@end

NS_ASSUME_NONNULL_END
