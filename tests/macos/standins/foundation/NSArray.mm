#import <Foundation/Foundation.h>

#include <vector>

#include "tests/macos/standins/foundation/Enumeration.h"
#include "tests/macos/standins/foundation/Text.h"

using vantrel::standins::raise;

@implementation NSArray {
  @protected
    std::vector<id> _objects;
    unsigned long _changes;
}

+ (instancetype)array {
    return [[self alloc] init];
}

+ (instancetype)arrayWithObjects:(const id _Nonnull[])objects count:(NSUInteger)count {
    NSArray* array = [[self alloc] init];
    for (NSUInteger index = 0; index < count; ++index) {
        if (objects[index] == nil) raise(@"NSInvalidArgumentException", @"attempt to insert nil object");
        array->_objects.push_back(objects[index]);
    }
    return array;
}

- (NSUInteger)count {
    return _objects.size();
}

- (id)objectAtIndexedSubscript:(NSUInteger)index {
    if (index >= _objects.size()) raise(@"NSRangeException", @"index beyond bounds");
    return _objects[index];
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)length {
    (void)buffer, (void)length;
    return vantrel::standins::enumerate(_objects, _changes, state);
}

- (id)vantrel_copyAs:(Class)cls {
    NSArray* copy = [[cls alloc] init];
    copy->_objects = _objects;
    return copy;
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return [self vantrel_copyAs:[NSArray class]];
}

- (id)mutableCopyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return [self vantrel_copyAs:[NSMutableArray class]];
}

@end

@implementation NSMutableArray

+ (instancetype)arrayWithCapacity:(NSUInteger)count {
    (void)count;
    return [[self alloc] init];
}

- (void)addObject:(id)object {
    if (object == nil) raise(@"NSInvalidArgumentException", @"attempt to insert nil object");
    _objects.push_back(object);
    ++_changes;
}

@end
