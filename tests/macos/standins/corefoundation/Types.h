#pragma once

#import <Foundation/Foundation.h>

/// An object of CoreFoundation, or of a framework beside it, that has its own type.
@protocol VantrelTyped <NSObject>
- (CFTypeID)vantrel_type;
@end

namespace vantrel::standins {

// The numbers do not matter; programs only compare them.
enum TypeIdentifier : CFTypeID {
    typeOfOthers = 1,
    typeOfStrings,
    typeOfDictionaries,
    typeOfArrays,
    typeOfBooleans,
    typeOfNumbers,
    typeOfElements,
    typeOfAccessibilityValues,
};

}  // namespace vantrel::standins
