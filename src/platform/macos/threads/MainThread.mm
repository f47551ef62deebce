#include "platform/macos/threads/MainThread.h"

#import <Foundation/Foundation.h>

#include <cstdio>
#include <cstdlib>

namespace vantrel::macos {

void requireMainThread(const char* operation) {
    if (NSThread.isMainThread) return;
    std::fprintf(stderr, "vantrel: %s was called off the main thread\n", operation);
    std::abort();
}

}  // namespace vantrel::macos
