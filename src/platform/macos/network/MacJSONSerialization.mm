#include "platform/macos/network/MacJSONSerialization.h"

#import <Foundation/Foundation.h>

#include "platform/macos/bridge/JSONBridge.h"
#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

std::optional<JSONValue> MacJSONSerialization::parse(std::string_view bytes) const {
    // Foundation would also read UTF-16 and UTF-32. Those contain zero bytes or are not UTF-8.
    if (bytes.empty() || bytes.find('\0') != std::string_view::npos) return std::nullopt;
    @autoreleasepool {
        if (strictText(bytes) == nil) return std::nullopt;
        NSData* data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
        @try {
            id object = [NSJSONSerialization JSONObjectWithData:data options:0 error:nil];
            const bool isContainer =
                [object isKindOfClass:[NSDictionary class]] || [object isKindOfClass:[NSArray class]];
            return isContainer ? jsonValue(object) : std::nullopt;
        } @catch (NSException*) {
            return std::nullopt;
        }
    }
}

std::optional<std::string> MacJSONSerialization::serialise(const JSONObject& object) const {
    @autoreleasepool {
        id dictionary = foundationObject(object);
        if (dictionary == nil) return std::nullopt;
        @try {
            // A number that is not finite cannot be written and would throw an exception below.
            if (![NSJSONSerialization isValidJSONObject:dictionary]) return std::nullopt;
            NSData* data = [NSJSONSerialization dataWithJSONObject:dictionary options:0 error:nil];
            if (data == nil) return std::nullopt;
            return std::string(static_cast<const char*>(data.bytes), data.length);
        } @catch (NSException*) {
            return std::nullopt;
        }
    }
}

}  // namespace vantrel::macos
