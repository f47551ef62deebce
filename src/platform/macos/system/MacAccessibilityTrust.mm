#include "platform/macos/system/MacAccessibilityTrust.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

namespace vantrel::macos {

bool MacAccessibilityTrust::isProcessTrusted() const {
    return AXIsProcessTrusted();
}

bool MacAccessibilityTrust::isProcessTrustedWithPrompt() {
    @autoreleasepool {
        NSDictionary* options = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : [NSNumber numberWithBool:YES]};
        return AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
    }
}

}  // namespace vantrel::macos
