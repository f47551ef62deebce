// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObject.h>

@class NSData, NSError, NSOperationQueue, NSURLRequest, NSURLResponse;

NS_ASSUME_NONNULL_BEGIN

API_AVAILABLE(macos(10.9))
@interface NSURLSessionTask : NSObject <NSCopying>
- (void)cancel;
- (void)resume;
@end

API_AVAILABLE(macos(10.9))
@interface NSURLSessionDataTask : NSURLSessionTask
@end

API_AVAILABLE(macos(10.9))
@interface NSURLSession : NSObject
@property(class, readonly, strong) NSURLSession* sharedSession;
@property(readonly, retain) NSOperationQueue* delegateQueue;
- (NSURLSessionDataTask*)dataTaskWithRequest:(NSURLRequest*)request
                           completionHandler:(void (^)(NSData* _Nullable data, NSURLResponse* _Nullable response,
                                                       NSError* _Nullable error))handler;
@end

NS_ASSUME_NONNULL_END
