#pragma once

#import <Foundation/NSEnumerator.h>

#include <vector>

namespace vantrel::standins {

/// Fast enumeration of all objects at once. Code that changes the collection must increase `changes`.
inline NSUInteger enumerate(std::vector<id>& objects, unsigned long& changes, NSFastEnumerationState* _Nonnull state) {
    if (state->state != 0) return 0;
    state->state = 1;
    state->mutationsPtr = &changes;
    state->itemsPtr = reinterpret_cast<id __unsafe_unretained*>(reinterpret_cast<void*>(objects.data()));
    return objects.size();
}

}  // namespace vantrel::standins
