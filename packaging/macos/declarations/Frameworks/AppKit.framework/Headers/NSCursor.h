// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSCursor : NSObject
@property(class, readonly, strong) NSCursor* operationNotAllowedCursor;
@end

NS_ASSUME_NONNULL_END
