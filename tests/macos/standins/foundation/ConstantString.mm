// A constant text is not reference-counted. Compiled without automatic reference counting, which would not allow that.
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
