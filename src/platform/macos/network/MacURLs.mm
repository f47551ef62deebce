#include "platform/macos/network/MacURLs.h"

#include "platform/macos/bridge/FormedURL.h"
#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

std::optional<URL> MacURLs::form(std::string_view text) const {
    @autoreleasepool {
        if (formedURL(text) == nil) return std::nullopt;
        return URL{std::string(text)};
    }
}

std::optional<std::string> MacURLs::addingPercentEncodingForQuery(std::string_view text) const {
    @autoreleasepool {
        NSCharacterSet* allowed = NSCharacterSet.URLQueryAllowedCharacterSet;
        return bytesOfAny([strictText(text) stringByAddingPercentEncodingWithAllowedCharacters:allowed]);
    }
}

}  // namespace vantrel::macos
