// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

@class NSMenu;

NS_ASSUME_NONNULL_BEGIN

@interface NSMenuItem : NSObject <NSCopying>
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)title
                       action:(nullable SEL)action
                keyEquivalent:(NSString*)key NS_DESIGNATED_INITIALIZER;
@property(copy) NSString* title;
@property(nullable, strong) NSMenu* submenu;
@property(getter=isEnabled) BOOL enabled;
@property(nullable, weak) id target;
@property(nullable) SEL action;
@property(nullable, strong) id representedObject;
@end

NS_ASSUME_NONNULL_END
