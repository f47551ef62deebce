#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

#include <map>
#include <memory>
#include <mutex>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/foundation/Observers.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Singletons.h"

using namespace vantrel::standins;

@implementation NSNotification

@synthesize name = _name, object = _object, userInfo = _userInfo;

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    return self;
}

@end

namespace {

/// By token. A center keeps its observers until they are removed.
std::mutex mutex;
std::map<void*, std::unique_ptr<vantrel::Observation>>& observations() {
    static auto* const all = new std::map<void*, std::unique_ptr<vantrel::Observation>>;
    return *all;
}

}  // namespace

/// The default center gets the notifications of displays, the workspace's own center those of Spaces, and neither gets
/// the other's.
@implementation NSNotificationCenter {
    bool _isWorkspaces;
}

+ (NSNotificationCenter*)defaultCenter {
    static NSNotificationCenter* const center = singleton([[NSNotificationCenter alloc] init]);
    return center;
}

+ (NSNotificationCenter*)vantrel_workspaceCenter {
    static NSNotificationCenter* const center = [] {
        NSNotificationCenter* made = [[NSNotificationCenter alloc] init];
        made->_isWorkspaces = true;
        return singleton(made);
    }();
    return center;
}

- (std::unique_ptr<vantrel::Observation>)vantrel_observe:(NSNotificationName)name block:(vantrel::Block)block {
    vantrel::Computer& computer = mac().parts();
    if (!_isWorkspaces && [name isEqualToString:NSApplicationDidChangeScreenParametersNotification]) {
        return computer.screens.observeScreenParametersDidChange(std::move(block));
    }
    if (_isWorkspaces && [name isEqualToString:NSWorkspaceActiveSpaceDidChangeNotification]) {
        return computer.spaces.observeActiveSpaceDidChange(std::move(block));
    }
    return nullptr;
}

- (id<NSObject>)addObserverForName:(NSNotificationName)name
                            object:(id)object
                             queue:(NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification*))block {
    if (object != nil || queue != NSOperationQueue.mainQueue) {
        vantrel::standins::raise(@"NSInvalidArgumentException", @"an observer that is not stood in for");
    }
    NSObject* token = [[NSObject alloc] init];
    auto observation =
        [self vantrel_observe:name block:[block] { withPool([block] { block([[NSNotification alloc] init]); })(); }];
    const std::lock_guard guard(mutex);
    observations()[(__bridge_retained void*)token] = std::move(observation);
    return token;
}

- (void)removeObserver:(id)observer {
    std::unique_ptr<vantrel::Observation> removed;
    {
        const std::lock_guard guard(mutex);
        const auto found = observations().find((__bridge void*)observer);
        if (found == observations().end()) return;
        removed = std::move(found->second);
        observations().erase(found);
    }
    CFRelease((__bridge CFTypeRef)observer);
}

@end

namespace vantrel::standins {

void forgetObservers() {
    std::map<void*, std::unique_ptr<Observation>> gone;
    {
        const std::lock_guard guard(mutex);
        gone.swap(observations());
    }
    for (auto& [token, observation] : gone) CFRelease(token);
}

}  // namespace vantrel::standins
