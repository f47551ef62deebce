// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObject.h>

@class NSData, NSError, NSOperationQueue, NSURLRequest, NSURLResponse;

NS_ASSUME_NONNULL_BEGIN

@interface NSURLSessionTask : NSObject <NSCopying>
- (void)cancel;
- (void)resume;
@end

@interface NSURLSessionDataTask : NSURLSessionTask
@end

@interface NSURLSession : NSObject
@property(class, readonly, strong) NSURLSession* sharedSession;
@property(readonly, retain) NSOperationQueue* delegateQueue;
- (NSURLSessionDataTask*)dataTaskWithRequest:(NSURLRequest*)request
                           completionHandler:(void (^)(NSData* _Nullable data, NSURLResponse* _Nullable response,
                                                       NSError* _Nullable error))handler;
@end

NS_ASSUME_NONNULL_END
