#include "platform/macos/threads/MacThreads.h"

#import <Foundation/Foundation.h>

namespace vantrel::macos {

bool MacThreads::isMainThread() const {
    return NSThread.isMainThread;
}

void MacThreads::sleep(double seconds) {
    [NSThread sleepForTimeInterval:seconds];
}

}  // namespace vantrel::macos
