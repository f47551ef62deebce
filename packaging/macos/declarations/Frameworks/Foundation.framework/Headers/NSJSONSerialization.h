// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObject.h>

@class NSData, NSError;

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, NSJSONReadingOptions) {
    NSJSONReadingMutableContainers = (1UL << 0),
    NSJSONReadingMutableLeaves = (1UL << 1),
    NSJSONReadingFragmentsAllowed = (1UL << 2),
};
typedef NS_OPTIONS(NSUInteger, NSJSONWritingOptions) {
    NSJSONWritingPrettyPrinted = (1UL << 0),
    NSJSONWritingSortedKeys = (1UL << 1),
    NSJSONWritingFragmentsAllowed = (1UL << 2),
    NSJSONWritingWithoutEscapingSlashes = (1UL << 3),
};

API_AVAILABLE(macos(10.7))
@interface NSJSONSerialization : NSObject
+ (BOOL)isValidJSONObject:(id)object;
+ (nullable NSData*)dataWithJSONObject:(id)object
                               options:(NSJSONWritingOptions)options
                                 error:(NSError* __autoreleasing _Nullable* _Nullable)error;
+ (nullable id)JSONObjectWithData:(NSData*)data
                          options:(NSJSONReadingOptions)options
                            error:(NSError* __autoreleasing _Nullable* _Nullable)error;
@end

NS_ASSUME_NONNULL_END
