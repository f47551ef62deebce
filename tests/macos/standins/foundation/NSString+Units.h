#pragma once

#import <Foundation/NSString.h>

#include <string>

@interface NSString (VantrelUnits)
/// UTF-16.
- (std::u16string)vantrel_units;
@end
