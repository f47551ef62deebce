#include "platform/macos/MacBundle.h"

#import <Foundation/Foundation.h>

#include "platform/macos/Text.h"

namespace vantrel::macos {

std::optional<std::string> MacBundle::identifier() const {
    @autoreleasepool {
        return bytesOfAny(NSBundle.mainBundle.bundleIdentifier);
    }
}

}  // namespace vantrel::macos
