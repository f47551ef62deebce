#include "platform/macos/threads/TimelyActivity.h"

namespace vantrel::macos {

TimelyActivity::TimelyActivity()
    : token_([NSProcessInfo.processInfo beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                                          reason:@"Sessione protetta"]) {}

TimelyActivity::~TimelyActivity() {
    [NSProcessInfo.processInfo endActivity:token_];
}

}  // namespace vantrel::macos
