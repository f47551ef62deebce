// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString* NSUserInterfaceItemIdentifier;

@protocol NSUserInterfaceItemIdentification
@property(nullable, copy) NSUserInterfaceItemIdentifier identifier API_AVAILABLE(macos(10.7));
@end

NS_ASSUME_NONNULL_END
