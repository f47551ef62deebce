#include "platform/macos/bridge/Text.h"

#include <algorithm>
#include <cstddef>

namespace vantrel::macos {

namespace {

constexpr std::size_t longestSequence = 4;

}  // namespace

NSString* strictText(std::string_view bytes) {
    if (bytes.empty()) return @"";
    return [[NSString alloc] initWithBytes:bytes.data() length:bytes.size() encoding:NSUTF8StringEncoding];
}

NSString* lenientText(std::string_view bytes) {
    if (NSString* whole = strictText(bytes)) return whole;
    NSMutableString* repaired = [NSMutableString string];
    while (!bytes.empty()) {
        NSString* character = nil;
        std::size_t length = 0;
        while (character == nil && length < std::min(bytes.size(), longestSequence)) {
            character = strictText(bytes.substr(0, ++length));
        }
        if (character == nil) length = 1;
        [repaired appendString:character != nil ? character : @"\uFFFD"];
        bytes.remove_prefix(length);
    }
    return repaired;
}

std::string bytesOf(NSString* text) {
    // Not UTF8String: it stops at a zero character and fails for half a surrogate pair.
    NSData* data = [text dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
    if (data.length == 0) return {};
    return {static_cast<const char*>(data.bytes), data.length};
}

std::optional<std::string> bytesOfAny(id object) {
    if (![object isKindOfClass:[NSString class]]) return std::nullopt;
    return bytesOf(object);
}

}  // namespace vantrel::macos
