// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

@class NSMenu, NSStatusBarButton;

NS_ASSUME_NONNULL_BEGIN

@interface NSStatusItem : NSObject
@property(nullable, readonly, strong) NSStatusBarButton* button API_AVAILABLE(macos(10.10));
@property(nullable, strong) NSMenu* menu;
@end

NS_ASSUME_NONNULL_END
