#include "platform/macos/system/MacUnicodeText.h"

#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

std::string MacUnicodeText::uppercased(std::string_view text) const {
    @autoreleasepool {
        return bytesOf(lenientText(text).uppercaseString);
    }
}

bool MacUnicodeText::isValidUTF8(std::string_view bytes) const {
    @autoreleasepool {
        return strictText(bytes) != nil;
    }
}

}  // namespace vantrel::macos
