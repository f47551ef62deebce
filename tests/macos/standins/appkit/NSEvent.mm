#import <AppKit/AppKit.h>

/// Only what a view may look at.
@implementation NSEvent {
    NSEventType _type;
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

- (NSEventType)type {
    return _type;
}

- (unsigned short)keyCode {
    return 0;
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end
