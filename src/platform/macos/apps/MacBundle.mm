#include "platform/macos/apps/MacBundle.h"

#import <Foundation/Foundation.h>

#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

std::optional<std::string> MacBundle::identifier() const {
    @autoreleasepool {
        return bytesOfAny(NSBundle.mainBundle.bundleIdentifier);
    }
}

}  // namespace vantrel::macos
