// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSDate.h>
#import <Foundation/NSObject.h>

@class NSData, NSURL;

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSURLRequestCachePolicy) {
    NSURLRequestUseProtocolCachePolicy = 0,
    NSURLRequestReloadIgnoringLocalCacheData = 1,
};

@interface NSURLRequest : NSObject <NSCopying, NSMutableCopying>
@property(nullable, readonly, copy) NSURL* URL;
@property(readonly) NSURLRequestCachePolicy cachePolicy;
@property(readonly) NSTimeInterval timeoutInterval;
@end

@interface NSMutableURLRequest : NSURLRequest
- (instancetype)initWithURL:(NSURL*)url
                cachePolicy:(NSURLRequestCachePolicy)policy
            timeoutInterval:(NSTimeInterval)seconds;
@property NSURLRequestCachePolicy cachePolicy;
@property NSTimeInterval timeoutInterval;
@property(copy) NSString* HTTPMethod;
@property(nullable, copy) NSData* HTTPBody;
- (void)setValue:(nullable NSString*)value forHTTPHeaderField:(NSString*)field;
@end

NS_ASSUME_NONNULL_END
