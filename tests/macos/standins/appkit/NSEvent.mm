#import <AppKit/AppKit.h>

/// Only what a view may look at.
@implementation NSEvent {
    NSEventType _type;
    NSString* _characters;
    unsigned short _keyCode;
}

+ (NSEvent*)otherEventWithType:(NSEventType)type
                      location:(NSPoint)location
                 modifierFlags:(NSEventModifierFlags)flags
                     timestamp:(NSTimeInterval)time
                  windowNumber:(NSInteger)window
                       context:(NSGraphicsContext*)context
                       subtype:(short)subtype
                         data1:(NSInteger)first
                         data2:(NSInteger)second {
    (void)location, (void)flags, (void)time, (void)window, (void)context, (void)subtype, (void)first, (void)second;
    NSEvent* event = [[NSEvent alloc] init];
    event->_type = type;
    return event;
}

+ (NSEvent*)keyEventWithType:(NSEventType)type
                       location:(NSPoint)location
                  modifierFlags:(NSEventModifierFlags)flags
                      timestamp:(NSTimeInterval)time
                   windowNumber:(NSInteger)window
                        context:(NSGraphicsContext*)context
                     characters:(NSString*)characters
    charactersIgnoringModifiers:(NSString*)unmodified
                      isARepeat:(BOOL)isRepeat
                        keyCode:(unsigned short)code {
    (void)location, (void)flags, (void)time, (void)window, (void)context, (void)characters, (void)isRepeat;
    NSEvent* event = [[NSEvent alloc] init];
    event->_type = type;
    event->_characters = [unmodified copy];
    event->_keyCode = code;
    return event;
}

- (NSString*)charactersIgnoringModifiers {
    return _characters;
}

- (NSEventType)type {
    return _type;
}

- (unsigned short)keyCode {
    return _keyCode;
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end
