#include "platform/macos/apps/MacProcessLauncher.h"

#import <AppKit/AppKit.h>
#include <signal.h>

#include <string_view>

#include "platform/macos/bridge/ErrorBridge.h"
#include "platform/macos/bridge/FormedURL.h"
#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

// The rules use the number.
static_assert(SIGKILL == 9);

namespace {

// Nil if it could not be passed on as it stands: it is not UTF-8, or the kernel would stop at its zero byte, and start
// another file or pass another argument.
NSString* exactText(std::string_view text) {
    return text.find('\0') == std::string_view::npos ? strictText(text) : nil;
}

// Nil likewise.
NSArray<NSString*>* exactTexts(const std::vector<std::string>& arguments) {
    NSMutableArray<NSString*>* texts = [NSMutableArray arrayWithCapacity:arguments.size()];
    for (const std::string& argument : arguments) {
        NSString* text = exactText(argument);
        if (text == nil) return nil;
        [texts addObject:text];
    }
    return texts;
}

NSTask* makeTask(NSString* executablePath, NSArray<NSString*>* arguments) {
    NSTask* task = [[NSTask alloc] init];
    task.executableURL = [NSURL fileURLWithPath:executablePath isDirectory:NO];
    task.arguments = arguments;
    // With a handler, the system sees the process end on a queue of its own. Without one it needs the run loop of this
    // thread, which may have none, and nobody else reaps the process.
    task.terminationHandler = ^(NSTask*) {
    };
    return task;
}

// The identifier of the bundle that has the executable. Nil if there is none.
NSString* bundleIdentifierAround(std::string_view executablePath) {
    const auto executables = executablePath.rfind("/Contents/MacOS/");
    if (executables == std::string_view::npos) return nil;
    return [NSBundle bundleWithPath:lenientText(executablePath.substr(0, executables))].bundleIdentifier;
}

// From macOS 14 on, an application that was started as a process may not come to the front unless the one that is there
// lets it. AppKit belongs to the main thread. That one is not waited for: it may be busy, or under an alert.
void yieldActivation(NSString* bundleIdentifier) {
    if (bundleIdentifier == nil) return;
    if (@available(macOS 14.0, *)) {
        CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
          NSApplication* application = NSApplication.sharedApplication;
          if (application.active) [application yieldActivationToApplicationWithBundleIdentifier:bundleIdentifier];
        });
        CFRunLoopWakeUp(CFRunLoopGetMain());
    }
}

}  // namespace

std::variant<ProcessIdentifier, PlatformError> MacProcessLauncher::launch(std::string_view executablePath,
                                                                          const std::vector<std::string>& arguments) {
    @autoreleasepool {
        NSString* path = exactText(executablePath);
        NSArray<NSString*>* texts = exactTexts(arguments);
        if (path == nil || texts == nil) return platformError(badURLError());
        @try {
            NSTask* task = makeTask(path, texts);
            NSError* error = nil;
            if (![task launchAndReturnError:&error]) return platformError(error);
            yieldActivation(bundleIdentifierAround(executablePath));
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
