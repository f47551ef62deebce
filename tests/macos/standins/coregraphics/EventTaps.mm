#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Classes.h"

using namespace vantrel::standins;

@interface VantrelEvent : NSObject
@end

@implementation VantrelEvent {
  @public
    vantrel::KeyEvent _key;
}
@end

/// The port that delivers a tap's events. It is a tap of the virtual Mac from its creation until it is invalidated:
/// releasing it is not enough. It receives nothing if it is disabled or not in the run loop.
@interface NSMachPort : NSObject
@end

@implementation NSMachPort {
  @public
    std::unique_ptr<vantrel::KeyboardTap> _tap;
    CGEventTapCallBack _callback;
    void* _userInfo;
    CGEventMask _mask;
    bool _isEnabled;
    bool _isInRunLoop;
}

- (bool)vantrel_swallows:(const vantrel::KeyEvent&)key {
    const auto type = static_cast<CGEventType>(key.type);
    const bool isNotice = type == kCGEventTapDisabledByTimeout || type == kCGEventTapDisabledByUserInput;
    if (!isNotice && (!_isEnabled || !_isInRunLoop || (_mask & CGEventMaskBit(type)) == 0)) return false;
    VantrelEvent* event = nil;
    if (!isNotice) {
        event = [[VantrelEvent alloc] init];
        event->_key = key;
    }
    // The callback may destroy its own port.
    NSMachPort* const self_ = self;
    // A notification has no event.
    void* const reference = (__bridge void*)event;
    CGEventTapCallBack callback = self_->_callback;
    return reinterpret_cast<void* (*)(void*, CGEventType, void*, void*)>(callback)(nullptr, type, reference,
                                                                                   self_->_userInfo) == nullptr &&
           !isNotice;
}

@end

@interface VantrelRunLoopSource : NSObject
@end

@implementation VantrelRunLoopSource {
  @public
    NSMachPort* _port;
}
@end

namespace {

/// Those in the system. Main thread.
std::vector<NSMachPort*>& standing() {
    static auto* const ports = new std::vector<NSMachPort*>;
    return *ports;
}

NSMachPort* portOf(CFMachPortRef reference) {
    if (reference == nullptr) fatal("an event tap that is null");
    return (__bridge NSMachPort*)reference;
}

VantrelRunLoopSource* sourceOf(CFRunLoopSourceRef reference) {
    return (__bridge VantrelRunLoopSource*)(CFTypeRef)reference;
}

const vantrel::KeyEvent* keyOf(CGEventRef event) {
    return event == nullptr ? nullptr : &((__bridge VantrelEvent*)(CFTypeRef)event)->_key;
}

}  // namespace

extern "C" {

CFMachPortRef CGEventTapCreate(CGEventTapLocation tap, CGEventTapPlacement place, CGEventTapOptions options,
                               CGEventMask eventsOfInterest, CGEventTapCallBack callback, void* userInfo) {
    if (tap != kCGSessionEventTap || place != kCGHeadInsertEventTap || options != kCGEventTapOptionDefault) {
        fatal("an event tap that is not stood in for");
    }
    NSMachPort* port = [[NSMachPort alloc] init];
    port->_callback = callback;
    port->_userInfo = userInfo;
    port->_mask = eventsOfInterest;
    __weak NSMachPort* weak = port;
    port->_tap = mac().keyboard().createFilter([weak](const vantrel::KeyEvent& key) {
        bool swallows = false;
        withPool([weak, &key, &swallows] { swallows = [weak vantrel_swallows:key]; })();
        return swallows;
    });
    if (!port->_tap) return nullptr;
    standing().push_back(port);
    return (__bridge_retained CFMachPortRef)port;
}

void CGEventTapEnable(CFMachPortRef tap, bool enable) {
    portOf(tap)->_isEnabled = enable;
}

CFRunLoopSourceRef CFMachPortCreateRunLoopSource(CFAllocatorRef, CFMachPortRef port, CFIndex) {
    VantrelRunLoopSource* source = [[VantrelRunLoopSource alloc] init];
    source->_port = portOf(port);
    return (__bridge_retained CFRunLoopSourceRef)(id)source;
}

void CFRunLoopAddSource(CFRunLoopRef, CFRunLoopSourceRef source, CFRunLoopMode mode) {
    // In the default mode only, no key would arrive under an alert.
    if (mode != kCFRunLoopCommonModes) fatal("a source in a mode that is not stood in for");
    sourceOf(source)->_port->_isInRunLoop = true;
}

void CFRunLoopRemoveSource(CFRunLoopRef, CFRunLoopSourceRef source, CFRunLoopMode) {
    sourceOf(source)->_port->_isInRunLoop = false;
}

void CFMachPortInvalidate(CFMachPortRef port) {
    NSMachPort* const invalid = portOf(port);
    invalid->_tap.reset();
    std::erase(standing(), invalid);
}

int64_t CGEventGetIntegerValueField(CGEventRef event, CGEventField field) {
    const auto* const key = keyOf(event);
    return key != nullptr && field == kCGKeyboardEventKeycode ? key->keyCode : 0;
}

CGEventFlags CGEventGetFlags(CGEventRef event) {
    const auto* const key = keyOf(event);
    return static_cast<CGEventFlags>(key == nullptr ? 0 : key->flags);
}

}  // extern "C"
