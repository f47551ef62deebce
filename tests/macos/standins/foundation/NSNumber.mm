#import <Foundation/Foundation.h>

#include <cmath>
#include <functional>
#include <sstream>

#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Singletons.h"

@implementation NSValue

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end

/// The class of true and false, a subclass of NSNumber.
@interface __NSCFBoolean : NSNumber
@end

@implementation NSNumber {
  @protected
    double _value;
}

+ (NSNumber*)numberWithInt:(int)value {
    return [self numberWithDouble:value];
}

+ (NSNumber*)numberWithDouble:(double)value {
    NSNumber* number = [[NSNumber alloc] init];
    number->_value = value;
    return number;
}

+ (NSNumber*)numberWithBool:(BOOL)value {
    return (__bridge NSNumber*)(CFTypeRef)(value ? kCFBooleanTrue : kCFBooleanFalse);
}

- (int)intValue {
    return static_cast<int>(self.longLongValue);
}

// Rounds toward zero. The result is not defined for values that are too large.
- (long long)longLongValue {
    constexpr double limit = 9.2e18;
    return std::fabs(_value) < limit ? static_cast<long long>(_value) : 0;
}

- (double)doubleValue {
    return _value;
}

- (BOOL)boolValue {
    return _value != 0;
}

- (NSString*)stringValue {
    std::ostringstream text;
    constexpr int digits = 17;
    text.precision(digits);
    text << _value;
    return vantrel::standins::textOf(text.str());
}

- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSNumber class]] && [(NSNumber*)object doubleValue] == _value;
}

- (NSUInteger)hash {
    return std::hash<double>()(_value);
}

@end

@implementation __NSCFBoolean

- (instancetype)initWithTruth:(bool)truth {
    self = [super init];
    if (self != nil) _value = truth ? 1 : 0;
    return self;
}

@end

const CFBooleanRef kCFBooleanTrue = (__bridge_retained CFBooleanRef)[[__NSCFBoolean alloc] initWithTruth:true];
const CFBooleanRef kCFBooleanFalse = (__bridge_retained CFBooleanRef)[[__NSCFBoolean alloc] initWithTruth:false];

@implementation NSNull

+ (NSNull*)null {
    static NSNull* const shared = vantrel::standins::singleton([[NSNull alloc] init]);
    return shared;
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end
