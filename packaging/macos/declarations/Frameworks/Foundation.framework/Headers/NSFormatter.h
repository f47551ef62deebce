// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSFormatter : NSObject <NSCopying>
@end

NS_ASSUME_NONNULL_END
