#include "platform/macos/apps/MacProcessLauncher.h"

#import <Foundation/Foundation.h>
#include <signal.h>

#include <algorithm>
#include <string_view>

#include "platform/macos/bridge/ErrorBridge.h"
#include "platform/macos/bridge/FormedURL.h"
#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

// The rules use the number.
static_assert(SIGKILL == 9);

namespace {

// The kernel would stop at the zero byte, and start another file or pass another argument.
bool holdsZero(std::string_view text) {
    return text.find('\0') != std::string_view::npos;
}

NSTask* makeTask(std::string_view executablePath, const std::vector<std::string>& arguments) {
    NSMutableArray<NSString*>* texts = [NSMutableArray arrayWithCapacity:arguments.size()];
    for (const std::string& argument : arguments) [texts addObject:lenientText(argument)];
    NSTask* task = [[NSTask alloc] init];
    task.executableURL = [NSURL fileURLWithPath:lenientText(executablePath) isDirectory:NO];
    task.arguments = texts;
    // With a handler, the system sees the process end on a queue of its own. Without one it needs the run loop of this
    // thread, which may have none, and nobody else reaps the process.
    task.terminationHandler = ^(NSTask*) {
    };
    return task;
}

}  // namespace

std::variant<ProcessIdentifier, PlatformError> MacProcessLauncher::launch(std::string_view executablePath,
                                                                          const std::vector<std::string>& arguments) {
    @autoreleasepool {
        if (holdsZero(executablePath) || std::any_of(arguments.begin(), arguments.end(), holdsZero)) {
            return platformError(badURLError());
        }
        @try {
            NSTask* task = makeTask(executablePath, arguments);
            NSError* error = nil;
            if (![task launchAndReturnError:&error]) return platformError(error);
            return ProcessIdentifier{task.processIdentifier};
        } @catch (NSException* exception) {
            return platformError(exception);
        }
    }
}

// Zero and negative numbers would name process groups.
bool MacProcessLauncher::sendSignal(ProcessIdentifier process, int signal) {
    return process > 0 && kill(process, signal) == 0;
}

}  // namespace vantrel::macos
