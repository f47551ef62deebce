#import <Foundation/Foundation.h>

#include <string>
#include <variant>
#include <vector>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/foundation/Text.h"

using namespace vantrel::standins;

@implementation NSTask {
    int _processIdentifier;
}

- (instancetype)init {
    return [super init];
}

- (int)processIdentifier {
    return _processIdentifier;
}

- (BOOL)isRunning {
    return mac().parts().runningApplications.withProcessIdentifier(_processIdentifier) != nullptr;
}

- (BOOL)launchAndReturnError:(NSError* __autoreleasing*)error {
    if (_processIdentifier != 0) vantrel::standins::raise(@"NSInvalidArgumentException", @"task already launched");
    if (self.executableURL == nil)
        vantrel::standins::raise(@"NSInvalidArgumentException", @"must provide a launch path");
    std::vector<std::string> arguments;
    for (NSString* argument in self.arguments) arguments.push_back(bytesOf(argument));
    // The kernel's texts end at a zero byte.
    for (std::string& argument : arguments) argument = argument.c_str();
    const std::string path = bytesOf(self.executableURL.path).c_str();
    const auto result = mac().processes().launchTask(path, arguments);
    if (const auto* failure = std::get_if<vantrel::PlatformError>(&result)) {
        if (error != nullptr) *error = errorOf(@"NSCocoaErrorDomain", 4, failure->localizedDescription);
        return NO;
    }
    _processIdentifier = std::get<vantrel::ProcessIdentifier>(result);
    // Without a handler the task sees its process end on the run loop of this thread, which need not run.
    if (self.terminationHandler == nil) mac().processes().find(_processIdentifier)->leaveZombie();
    return YES;
}

@end
