#import <AppKit/AppKit.h>

#include <mutex>
#include <utility>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/appkit/NSRunningApplication+Virtual.h"
#include "tests/macos/standins/foundation/Text.h"

using namespace vantrel::standins;

/// Whether it has ended is a snapshot, which changes only when the main run loop turns.
@implementation NSRunningApplication {
    std::shared_ptr<vantrel::RunningApplication> _application;
    std::mutex _mutex;
    long _turn;
    bool _hasEnded;
}

+ (NSRunningApplication*)vantrel_applicationOf:(std::shared_ptr<vantrel::RunningApplication>)application {
    if (!application) return nil;
    NSRunningApplication* made = [[NSRunningApplication alloc] init];
    made->_turn = turnsOfTheMainLoop();
    made->_hasEnded = application->isTerminated();
    made->_application = std::move(application);
    return made;
}

+ (NSArray<NSRunningApplication*>*)runningApplicationsWithBundleIdentifier:(NSString*)identifier {
    NSMutableArray* found = [NSMutableArray arrayWithCapacity:1];
    for (auto& application : mac().parts().runningApplications.withBundleIdentifier(bytesOf(identifier))) {
        [found addObject:[self vantrel_applicationOf:std::move(application)]];
    }
    return found;
}

+ (instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid {
    return [self vantrel_applicationOf:mac().parts().runningApplications.withProcessIdentifier(pid)];
}

- (BOOL)isTerminated {
    const long turn = turnsOfTheMainLoop();
    const std::lock_guard guard(_mutex);
    if (_turn != turn) {
        _turn = turn;
        _hasEnded = _application->isTerminated();
    }
    return _hasEnded;
}

- (pid_t)processIdentifier {
    return _application->processIdentifier();
}

- (NSString*)bundleIdentifier {
    const auto identifier = _application->bundleIdentifier();
    return identifier ? textOf(*identifier) : nil;
}

- (NSString*)localizedName {
    const auto name = _application->localizedName();
    return name ? textOf(*name) : nil;
}

- (NSURL*)executableURL {
    return nil;
}

- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options {
    return _application->activate(static_cast<vantrel::ActivationOptions>(options));
}

- (BOOL)terminate {
    return _application->terminate();
}

- (BOOL)forceTerminate {
    return _application->forceTerminate();
}

@end
