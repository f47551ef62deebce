// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

@class NSGraphicsContext;

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSEventType) {
    NSEventTypeKeyDown = 10,
    NSEventTypeApplicationDefined = 15,
};
typedef NS_OPTIONS(NSUInteger, NSEventModifierFlags) {
    NSEventModifierFlagCommand = 1 << 20,
};

@interface NSEvent : NSObject <NSCopying>
+ (nullable NSEvent*)otherEventWithType:(NSEventType)type
                               location:(NSPoint)location
                          modifierFlags:(NSEventModifierFlags)flags
                              timestamp:(NSTimeInterval)time
                           windowNumber:(NSInteger)window
                                context:(nullable NSGraphicsContext*)context
                                subtype:(short)subtype
                                  data1:(NSInteger)first
                                  data2:(NSInteger)second;
+ (nullable NSEvent*)keyEventWithType:(NSEventType)type
                             location:(NSPoint)location
                        modifierFlags:(NSEventModifierFlags)flags
                            timestamp:(NSTimeInterval)time
                         windowNumber:(NSInteger)window
                              context:(nullable NSGraphicsContext*)context
                           characters:(NSString*)characters
          charactersIgnoringModifiers:(NSString*)unmodified
                            isARepeat:(BOOL)isRepeat
                              keyCode:(unsigned short)code;
@property(readonly) NSEventType type;
@property(nullable, readonly, copy) NSString* charactersIgnoringModifiers;
@property(readonly) unsigned short keyCode;
@end

NS_ASSUME_NONNULL_END
