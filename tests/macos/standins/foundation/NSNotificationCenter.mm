#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

#include <map>
#include <memory>
#include <mutex>
#include <vector>

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

struct Observer {
    void* center;
    NSNotificationName name;
    std::unique_ptr<vantrel::Observation> observation;
    vantrel::Block tell;
};

/// By token. A center keeps its observers until they are removed.
std::mutex mutex;
std::map<void*, Observer>& observers() {
    static auto* const all = new std::map<void*, Observer>;
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
    const vantrel::Block tell = [block] { withPool([block] { block([[NSNotification alloc] init]); })(); };
    auto observation = [self vantrel_observe:name block:tell];
    const std::lock_guard guard(mutex);
    observers()[(__bridge_retained void*)token] = {(__bridge void*)self, name, std::move(observation), tell};
    return token;
}

// Off the main thread, the page of the observer's queue does not say whether this waits.
- (void)postNotificationName:(NSNotificationName)name object:(id)object {
    if (object != nil) vantrel::standins::raise(@"NSInvalidArgumentException", @"a sender that is not stood in for");
    std::vector<vantrel::Block> told;
    {
        const std::lock_guard guard(mutex);
        for (const auto& [token, observer] : observers()) {
            const bool hears = observer.center == (__bridge void*)self && [observer.name isEqualToString:name];
            if (hears) told.push_back(observer.tell);
        }
    }
    for (const vantrel::Block& each : told) {
        if (NSThread.isMainThread) {
            each();
        } else {
            mac().parts().dispatch.mainQueue().async(each);
        }
    }
}

// What was posted before is still told on its queue: the page promises nothing else. So there is always something on
// its way.
- (void)removeObserver:(id)observer {
    Observer removed;
    {
        const std::lock_guard guard(mutex);
        const auto found = observers().find((__bridge void*)observer);
        if (found == observers().end()) return;
        removed = std::move(found->second);
        observers().erase(found);
    }
    if (removed.observation != nullptr) mac().engine().mainLoop.postOwn(std::move(removed.tell));
    CFRelease((__bridge CFTypeRef)observer);
}

@end

namespace vantrel::standins {

void forgetObservers() {
    std::map<void*, Observer> gone;
    {
        const std::lock_guard guard(mutex);
        gone.swap(observers());
    }
    for (auto& [token, observer] : gone) CFRelease(token);
}

}  // namespace vantrel::standins
