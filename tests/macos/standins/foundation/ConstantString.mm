// A constant text is not counted. Without automatic reference counting, which forbids to say so.
#import <Foundation/Foundation.h>

@interface __NSCFConstantString : NSString
@end

@interface __NSCFConstantString (VantrelLifetime)
@end

#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"
@implementation __NSCFConstantString (VantrelLifetime)

- (id)retain {
    return self;
}

- (oneway void)release {
}

- (id)autorelease {
    return self;
}

@end
