#include "platform/macos/apps/FrontTrace.h"

#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/macos/bridge/Text.h"
#include "platform/macos/system/MacISO8601DateFormatter.h"
#include "platform/macos/threads/MacClock.h"
#include "platform/macos/threads/MacDispatch.h"
#include "platform/portable/StandardError.h"

namespace vantrel::macos {

namespace {

bool isOn() {
    // Nobody changes the environment.
    const char* traced = std::getenv("VANTREL_TRACE");  // NOLINT(concurrency-mt-unsafe)
    return traced != nullptr && std::string_view(traced) == "front";
}

void say(NSRunningApplication* application, std::string_view what) {
    @autoreleasepool {
        std::string line = "vantrel: " + MacISO8601DateFormatter().string(MacClock().secondsSince1970()) + " front: ";
        line.append(bytesOf(application.bundleIdentifier)).append(what).push_back('\n');
        sayOnStandardError(line);
    }
}

}  // namespace

bool FrontTrace::answered(NSRunningApplication* asked, const char* request, bool answer) {
    if (isOn()) say(asked, std::string(" ").append(request).append(answer ? " is granted" : " is declined"));
    return answer;
}

void FrontTrace::made(NSRunningApplication* asked, const char* request) {
    if (isOn()) say(asked, std::string(" ").append(request).append(" is made"));
}

void FrontTrace::lookLater() {
    constexpr double later = 1;
    if (!isOn()) return;
    dispatch_after(timeFromNow(later), dispatch_get_main_queue(), ^{
      NSRunningApplication* front = NSWorkspace.sharedWorkspace.frontmostApplication;
      if (front != nil) say(front, " is in front");
    });
}

}  // namespace vantrel::macos
