#pragma once

#import <Foundation/Foundation.h>

/// An object of CoreFoundation's or of a framework beside it that has a type of its own.
@protocol VantrelTyped <NSObject>
- (CFTypeID)vantrel_type;
@end

namespace vantrel::standins {

// Any numbers; programs compare them and nothing else.
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
