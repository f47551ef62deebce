// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@protocol NSAccessibility <NSObject>
@property(nullable, copy) NSString* accessibilityLabel API_AVAILABLE(macos(10.10));
@end

NS_ASSUME_NONNULL_END
