#include "platform/macos/MacWorkspace.h"

#import <AppKit/AppKit.h>

#include "platform/macos/FormedURL.h"
#include "platform/macos/MainThread.h"

namespace vantrel::macos {

bool MacWorkspace::open(const URL& url) {
    requireMainThread("open");
    NSURL* address = formedURL(url.absoluteString);
    return address != nil && [NSWorkspace.sharedWorkspace openURL:address];
}

}  // namespace vantrel::macos
