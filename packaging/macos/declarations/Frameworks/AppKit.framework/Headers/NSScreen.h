// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(class, nullable, readonly, strong) NSScreen* mainScreen;
@property(class, readonly) BOOL screensHaveSeparateSpaces API_AVAILABLE(macos(10.9));
@property(readonly) NSRect frame;
@property(readonly, copy) NSString* localizedName API_AVAILABLE(macos(10.15));
@end

NS_ASSUME_NONNULL_END
