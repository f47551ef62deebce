// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObject.h>

@class NSArray<__covariant ObjectType>, NSDictionary<__covariant KeyType, __covariant ObjectType>, NSError, NSURL;

NS_ASSUME_NONNULL_BEGIN

@interface NSTask : NSObject
- (instancetype)init;
@property(nullable, copy) NSURL* executableURL API_AVAILABLE(macos(10.13));
@property(nullable, copy) NSArray<NSString*>* arguments;
- (BOOL)launchAndReturnError:(NSError* __autoreleasing _Nullable* _Nullable)error API_AVAILABLE(macos(10.13));
@property(readonly) int processIdentifier;
@property(readonly, getter=isRunning) BOOL running;
@property(nullable, copy) void (^terminationHandler)(NSTask* task) API_AVAILABLE(macos(10.7));
@end

NS_ASSUME_NONNULL_END
