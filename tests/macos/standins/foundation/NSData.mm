#import <Foundation/Foundation.h>

#include <string>

@implementation NSData {
    std::string _bytes;
}

+ (instancetype)data {
    return [[self alloc] init];
}

+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length {
    return [[self alloc] initWithBytes:bytes length:length];
}

- (instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)length {
    self = [super init];
    if (self != nil && length > 0) _bytes.assign(static_cast<const char*>(bytes), length);
    return self;
}

- (NSUInteger)length {
    return _bytes.size();
}

// Null if there are no bytes.
- (const void*)bytes {
    return _bytes.empty() ? nullptr : _bytes.data();
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

- (id)mutableCopyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return [NSData dataWithBytes:_bytes.data() length:_bytes.size()];
}

@end
