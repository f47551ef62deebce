// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSCharacterSet.h>
#import <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSURL : NSObject <NSCopying>
+ (nullable instancetype)URLWithString:(NSString*)text;
+ (nullable instancetype)URLWithString:(NSString*)text
             encodingInvalidCharacters:(BOOL)encoding API_AVAILABLE(macos(14.0));
+ (NSURL*)fileURLWithPath:(NSString*)path;
+ (NSURL*)fileURLWithPath:(NSString*)path isDirectory:(BOOL)isDirectory API_AVAILABLE(macos(10.5));
@property(nullable, readonly, copy) NSString* absoluteString;
@property(nullable, readonly, copy) NSString* path;
@end

@interface NSString (NSURLUtilities)
- (nullable NSString*)stringByAddingPercentEncodingWithAllowedCharacters:(NSCharacterSet*)allowed
    API_AVAILABLE(macos(10.9));
@end

@interface NSCharacterSet (NSURLUtilities)
@property(class, readonly, copy) NSCharacterSet* URLQueryAllowedCharacterSet API_AVAILABLE(macos(10.9));
@end

NS_ASSUME_NONNULL_END
