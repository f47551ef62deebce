#import <Foundation/Foundation.h>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/runtime/Singletons.h"

using vantrel::standins::mac;
using vantrel::standins::singleton;
using vantrel::standins::withPool;

@implementation NSThread

+ (BOOL)isMainThread {
    return mac().parts().threads.isMainThread();
}

+ (void)sleepForTimeInterval:(NSTimeInterval)seconds {
    mac().parts().threads.sleep(seconds);
}

@end

/// The main queue. Any other one is the URL session's.
@implementation NSOperationQueue {
    bool _isMain;
}

@synthesize name = _name;

+ (NSOperationQueue*)mainQueue {
    static NSOperationQueue* const queue = [] {
        NSOperationQueue* made = [[NSOperationQueue alloc] init];
        made->_isMain = true;
        return singleton(made);
    }();
    return queue;
}

- (void)addOperationWithBlock:(void (^)(void))block {
    if (_isMain) {
        mac().parts().dispatch.mainQueue().async(withPool(block));
    } else {
        mac().engine().urlSession.after(0, withPool(block));
    }
}

@end
