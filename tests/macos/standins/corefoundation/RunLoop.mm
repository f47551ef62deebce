#import <Foundation/Foundation.h>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/runtime/Singletons.h"

using vantrel::standins::mac;
using vantrel::standins::singleton;
using vantrel::standins::withPool;

@interface VantrelRunLoop : NSObject
@end

@implementation VantrelRunLoop
@end

const CFRunLoopMode kCFRunLoopCommonModes = (__bridge CFStringRef) @"kCFRunLoopCommonModes";

extern "C" {

CFRunLoopRef CFRunLoopGetMain() {
    static VantrelRunLoop* const loop = singleton([[VantrelRunLoop alloc] init]);
    return (__bridge CFRunLoopRef)(id)loop;
}

// In the common modes, whatever the main thread is doing: as an event.
void CFRunLoopPerformBlock(CFRunLoopRef, CFTypeRef, void (^block)(void)) {
    mac().engine().mainLoop.postOwn(withPool(block));
}

// The virtual Mac's main thread checks by itself.
void CFRunLoopWakeUp(CFRunLoopRef) {}

}  // extern "C"
