#include "platform/macos/apps/MacWorkspace.h"

#import <AppKit/AppKit.h>

#include "platform/macos/bridge/FormedURL.h"
#include "platform/macos/threads/MainThread.h"

namespace vantrel::macos {

bool MacWorkspace::open(const URL& url) {
    requireMainThread("open");
    NSURL* address = formedURL(url.absoluteString);
    return address != nil && [NSWorkspace.sharedWorkspace openURL:address];
}

}  // namespace vantrel::macos
