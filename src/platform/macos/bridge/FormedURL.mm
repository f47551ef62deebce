#include "platform/macos/bridge/FormedURL.h"

#include <cctype>
#include <cstddef>

#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

namespace {

// Before macOS 14 the documentation does not say that the system checks what follows a percent sign.
bool escapesAreWhole(std::string_view text) {
    const auto isHexDigit = [text](std::size_t index) {
        return index < text.size() && std::isxdigit(static_cast<unsigned char>(text[index])) != 0;
    };
    for (auto at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 1)) {
        if (!isHexDigit(at + 1) || !isHexDigit(at + 2)) return false;
    }
    return true;
}

}  // namespace

NSURL* formedURL(std::string_view text) {
    NSString* string = strictText(text);
    if (string == nil || text.empty() || !escapesAreWhole(text)) return nil;
    NSURL* url = nil;
    if (@available(macOS 14.0, *)) {
        url = [NSURL URLWithString:string encodingInvalidCharacters:NO];
    } else {
        url = [NSURL URLWithString:string];
    }
    return [url.absoluteString isEqualToString:string] ? url : nil;
}

NSError* badURLError() {
    return [NSError errorWithDomain:NSURLErrorDomain code:NSURLErrorBadURL userInfo:nil];
}

}  // namespace vantrel::macos
