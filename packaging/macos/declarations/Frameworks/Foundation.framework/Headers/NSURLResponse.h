// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObject.h>

@class NSURL;

NS_ASSUME_NONNULL_BEGIN

@interface NSURLResponse : NSObject <NSCopying>
@property(nullable, readonly, copy) NSURL* URL;
@end

@interface NSHTTPURLResponse : NSURLResponse
@property(readonly) NSInteger statusCode;
@end

NS_ASSUME_NONNULL_END
