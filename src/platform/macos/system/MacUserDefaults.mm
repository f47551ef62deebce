#include "platform/macos/system/MacUserDefaults.h"

#import <Foundation/Foundation.h>

#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

// Not stringForKey:, which turns a number into text.
std::optional<std::string> MacUserDefaults::string(std::string_view key) const {
    @autoreleasepool {
        return bytesOfAny([NSUserDefaults.standardUserDefaults objectForKey:lenientText(key)]);
    }
}

void MacUserDefaults::set(std::string_view key, std::string_view value) {
    @autoreleasepool {
        [NSUserDefaults.standardUserDefaults setObject:lenientText(value) forKey:lenientText(key)];
    }
}

}  // namespace vantrel::macos
