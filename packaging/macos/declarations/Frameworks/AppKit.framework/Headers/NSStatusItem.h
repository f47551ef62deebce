// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <AppKit/NSButton.h>

@class NSMenu;

NS_ASSUME_NONNULL_BEGIN

@interface NSStatusBarButton : NSButton
@end

@interface NSStatusItem : NSObject
@property(nullable, readonly, strong) NSStatusBarButton* button API_AVAILABLE(macos(10.10));
@property(nullable, strong) NSMenu* menu;
@end

NS_ASSUME_NONNULL_END
