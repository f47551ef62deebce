#include "platform/macos/system/MacFileManager.h"

#import <Foundation/Foundation.h>

#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

bool MacFileManager::fileExists(std::string_view path) const {
    // The kernel would stop at a zero byte and find another file.
    if (path.find('\0') != std::string_view::npos) return false;
    @autoreleasepool {
        NSString* text = strictText(path);
        return text != nil && [NSFileManager.defaultManager fileExistsAtPath:text];
    }
}

std::string MacFileManager::homeDirectory() const {
    @autoreleasepool {
        return bytesOf(NSHomeDirectory());
    }
}

}  // namespace vantrel::macos
