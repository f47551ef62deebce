// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

@class NSRunningApplication, NSWorkspaceOpenConfiguration;

NS_ASSUME_NONNULL_BEGIN

FOUNDATION_EXPORT NSNotificationName NSWorkspaceActiveSpaceDidChangeNotification API_AVAILABLE(macos(10.6));

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@property(nullable, readonly, strong) NSRunningApplication* frontmostApplication API_AVAILABLE(macos(10.7));
- (BOOL)openURL:(NSURL*)url;
- (void)openURLs:(NSArray<NSURL*>*)urls
    withApplicationAtURL:(NSURL*)applicationURL
           configuration:(NSWorkspaceOpenConfiguration*)configuration
       completionHandler:(nullable void (^)(NSRunningApplication* _Nullable application,
                                            NSError* _Nullable error))handler API_AVAILABLE(macos(10.15));
@end

API_AVAILABLE(macos(10.15))
@interface NSWorkspaceOpenConfiguration : NSObject <NSCopying>
+ (instancetype)configuration;
@property BOOL activates;
@end

NS_ASSUME_NONNULL_END
