// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObject.h>

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

NS_ASSUME_NONNULL_END
