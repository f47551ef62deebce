// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <AppKit/NSMenuItem.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSMenu : NSObject <NSCopying>
@property(copy) NSString* title;
- (instancetype)initWithTitle:(NSString*)title NS_DESIGNATED_INITIALIZER;
- (void)addItem:(NSMenuItem*)item;
@property(copy) NSArray<NSMenuItem*>* itemArray;
- (NSInteger)indexOfItemWithTitle:(NSString*)title;
- (void)update;
- (void)performActionForItemAtIndex:(NSInteger)index;
- (void)cancelTracking API_AVAILABLE(macos(10.5));
@end

NS_ASSUME_NONNULL_END
