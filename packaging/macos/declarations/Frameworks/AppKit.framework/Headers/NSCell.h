// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSCell : NSObject <NSCopying>
@property(getter=isScrollable) BOOL scrollable;
@property BOOL wraps;
@end

NS_ASSUME_NONNULL_END
