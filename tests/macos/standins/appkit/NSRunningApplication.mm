#import <AppKit/AppKit.h>

#include <mutex>
#include <utility>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/appkit/NSRunningApplication+Virtual.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Classes.h"

using namespace vantrel::standins;

/// Whether it has ended and whether it is in front is a snapshot, which changes only when the main run loop turns.
@implementation NSRunningApplication {
    std::shared_ptr<vantrel::RunningApplication> _application;
    std::mutex _mutex;
    long _turn;
    bool _hasEnded;
    bool _isActive;
}

+ (NSRunningApplication*)vantrel_applicationOf:(std::shared_ptr<vantrel::RunningApplication>)application {
    if (!application) return nil;
    NSRunningApplication* made = [[NSRunningApplication alloc] init];
    made->_application = std::move(application);
    [made vantrel_renewSnapshot];
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

+ (NSRunningApplication*)currentApplication {
    return [self runningApplicationWithProcessIdentifier:mac().processes().ownProcess()];
}

- (void)vantrel_renewSnapshot {
    _turn = turnsOfTheMainLoop();
    _hasEnded = _application->isTerminated();
    _isActive = mac().desktop().isFrontmost(_application->processIdentifier());
}

- (BOOL)isTerminated {
    const std::lock_guard guard(_mutex);
    if (_turn != turnsOfTheMainLoop()) [self vantrel_renewSnapshot];
    return _hasEnded;
}

- (BOOL)isActive {
    const std::lock_guard guard(_mutex);
    if (_turn != turnsOfTheMainLoop()) [self vantrel_renewSnapshot];
    return _isActive;
}

- (std::shared_ptr<vantrel::virtualmac::VirtualProcess>)vantrel_process {
    return mac().processes().find(_application->processIdentifier());
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
    return [self vantrel_process]->requestActivation(static_cast<vantrel::ActivationOptions>(options));
}

- (BOOL)activateFromApplication:(NSRunningApplication*)application options:(NSApplicationActivationOptions)options {
    if (!systemIsAtLeast(14))
        raise(@"NSInvalidArgumentException", @"activateFromApplication:options:: unrecognized selector");
    if (application == nil) raise(@"NSInvalidArgumentException", @"an activation from nil");
    return [self vantrel_process]->requestActivationFrom([application vantrel_process]->asCandidate(),
                                                         static_cast<vantrel::ActivationOptions>(options));
}

- (BOOL)terminate {
    return _application->terminate();
}

- (BOOL)forceTerminate {
    return _application->forceTerminate();
}

@end
