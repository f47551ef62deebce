#include "platform/macos/bridge/ErrorBridge.h"

#include <string>

#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

PlatformError platformError(NSError* error) {
    @autoreleasepool {
        std::string text = bytesOf(error.localizedDescription);
        if (!text.empty()) return {std::move(text)};
        NSError* unknown = [NSError errorWithDomain:NSURLErrorDomain code:NSURLErrorUnknown userInfo:nil];
        return {bytesOf(unknown.localizedDescription)};
    }
}

PlatformError platformError(NSException* exception) {
    @autoreleasepool {
        std::string reason = bytesOf(exception.reason);
        return {reason.empty() ? bytesOf(exception.name) : std::move(reason)};
    }
}

}  // namespace vantrel::macos
