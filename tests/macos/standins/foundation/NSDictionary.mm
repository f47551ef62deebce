#import <Foundation/Foundation.h>

#include <algorithm>
#include <vector>

#include "tests/macos/standins/foundation/Enumeration.h"
#include "tests/macos/standins/foundation/Text.h"

using vantrel::standins::raise;

/// Keeps the keys in the order of insertion. On a Mac, code must not depend on any order.
@implementation NSDictionary {
  @protected
    std::vector<id> _keys;
    std::vector<id> _objects;
    unsigned long _changes;
}

+ (instancetype)dictionary {
    return [[self alloc] init];
}

+ (instancetype)dictionaryWithObjects:(const id _Nonnull[])objects
                              forKeys:(const id<NSCopying> _Nonnull[])keys
                                count:(NSUInteger)count {
    NSDictionary* dictionary = [[self alloc] init];
    for (NSUInteger index = 0; index < count; ++index) [dictionary vantrel_set:objects[index] forKey:keys[index]];
    return dictionary;
}

- (std::size_t)vantrel_placeOf:(id)key {
    const auto found = std::find_if(_keys.begin(), _keys.end(), [key](id each) { return [each isEqual:key]; });
    return static_cast<std::size_t>(found - _keys.begin());
}

- (void)vantrel_set:(id)object forKey:(id)key {
    if (key == nil || object == nil) raise(@"NSInvalidArgumentException", @"attempt to insert nil");
    const std::size_t place = [self vantrel_placeOf:key];
    ++_changes;
    if (place < _keys.size()) {
        _objects[place] = object;
        return;
    }
    _keys.push_back([key copy]);
    _objects.push_back(object);
}

- (NSUInteger)count {
    return _keys.size();
}

- (id)objectForKey:(id)key {
    const std::size_t place = [self vantrel_placeOf:key];
    return place < _keys.size() ? _objects[place] : nil;
}

- (id)objectForKeyedSubscript:(id)key {
    return [self objectForKey:key];
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)length {
    (void)buffer, (void)length;
    return vantrel::standins::enumerate(_keys, _changes, state);
}

- (id)vantrel_copyAs:(Class)cls {
    NSDictionary* copy = [[cls alloc] init];
    copy->_keys = _keys;
    copy->_objects = _objects;
    return copy;
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return [self vantrel_copyAs:[NSDictionary class]];
}

- (id)mutableCopyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return [self vantrel_copyAs:[NSMutableDictionary class]];
}

@end

@implementation NSMutableDictionary

+ (instancetype)dictionaryWithCapacity:(NSUInteger)capacity {
    (void)capacity;
    return [[self alloc] init];
}

- (void)setObject:(id)object forKey:(id<NSCopying>)key {
    [self vantrel_set:object forKey:key];
}

// Nil removes the key.
- (void)setObject:(id)object forKeyedSubscript:(id<NSCopying>)key {
    if (object != nil) {
        [self vantrel_set:object forKey:key];
        return;
    }
    const std::size_t place = [self vantrel_placeOf:key];
    if (place == _keys.size()) return;
    _keys.erase(_keys.begin() + static_cast<std::ptrdiff_t>(place));
    _objects.erase(_objects.begin() + static_cast<std::ptrdiff_t>(place));
    ++_changes;
}

@end
