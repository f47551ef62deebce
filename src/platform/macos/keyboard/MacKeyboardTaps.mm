#include "platform/macos/keyboard/MacKeyboardTaps.h"

#include <string_view>
#include <utility>

#include "platform/macos/system/MacISO8601DateFormatter.h"
#include "platform/macos/threads/MacClock.h"
#include "platform/macos/threads/MainThread.h"
#include "platform/portable/LostTap.h"

namespace vantrel::macos {

namespace {

constexpr CGEventMask keyDownAndFlagsChanged = CGEventMaskBit(kCGEventKeyDown) | CGEventMaskBit(kCGEventFlagsChanged);

static_assert(keyDownAndFlagsChanged == 0x1400);
static_assert(kCGSessionEventTap == 1 && kCGHeadInsertEventTap == 0 && kCGEventTapOptionDefault == 0);
static_assert(kCGKeyboardEventKeycode == 9);
// The rules use these values.
static_assert(kCGEventFlagMaskShift == 0x20000 && kCGEventFlagMaskControl == 0x40000 &&
              kCGEventFlagMaskCommand == 0x100000);
static_assert(static_cast<CGEventType>(KeyEventType::keyDown) == kCGEventKeyDown);
static_assert(static_cast<CGEventType>(KeyEventType::flagsChanged) == kCGEventFlagsChanged);
static_assert(static_cast<CGEventType>(KeyEventType::tapDisabledByTimeout) == kCGEventTapDisabledByTimeout);
static_assert(static_cast<CGEventType>(KeyEventType::tapDisabledByUserInput) == kCGEventTapDisabledByUserInput);

// Must not allocate: this runs for every key press of the session. A notification that the tap was disabled has no
// event to read.
KeyEvent keyEvent(CGEventType type, CGEventRef event) {
    KeyEvent key;
    key.type = static_cast<KeyEventType>(type);
    if (type != kCGEventKeyDown && type != kCGEventFlagsChanged) return key;
    key.keyCode = CGEventGetIntegerValueField(event, kCGKeyboardEventKeycode);
    key.flags = CGEventGetFlags(event);
    return key;
}

}  // namespace

std::unique_ptr<MacKeyboardTap> MacKeyboardTap::create(KeyDecision decision, KeyReport report) {
    Rules rules{decision, std::make_shared<const KeyReport>(std::move(report))};
    std::unique_ptr<MacKeyboardTap> tap(new MacKeyboardTap(std::move(rules)));
    if (!tap->install()) return nullptr;
    return tap;
}

bool MacKeyboardTap::install() {
    void* const userInfo = const_cast<Rules*>(rules_.get());
    eventTap_ = CFReference<CFMachPortRef>::created(CGEventTapCreate(kCGSessionEventTap, kCGHeadInsertEventTap,
                                                                     kCGEventTapOptionDefault, keyDownAndFlagsChanged,
                                                                     &MacKeyboardTap::handle, userInfo));
    if (!eventTap_) return false;
    runLoopSource_ = CFReference<CFRunLoopSourceRef>::created(
        CFMachPortCreateRunLoopSource(kCFAllocatorDefault, eventTap_.get(), 0));
    if (!runLoopSource_) return false;
    CFRunLoopAddSource(CFRunLoopGetMain(), runLoopSource_.get(), kCFRunLoopCommonModes);
    CGEventTapEnable(eventTap_.get(), true);
    loss_ = std::make_unique<const AccessibilityLoss>([this] { leave("the Accessibility permission was taken away"); });
    return true;
}

MacKeyboardTap::~MacKeyboardTap() {
    requireMainThread("the end of a keyboard tap");
    remove();
}

// A tap that is only disabled stays in the system and slows down every key press. Invalidating its port removes it.
void MacKeyboardTap::remove() {
    if (!eventTap_) return;
    CGEventTapEnable(eventTap_.get(), false);
    if (runLoopSource_) CFRunLoopRemoveSource(CFRunLoopGetMain(), runLoopSource_.get(), kCFRunLoopCommonModes);
    CFMachPortInvalidate(eventTap_.get());
    runLoopSource_ = {};
    eventTap_ = {};
    loss_.reset();
}

// The tap is not enabled again: whoever disabled it had a reason. It goes at once, because a filter whose client has
// lost its permission can hold up all input, and the system may still call that client trusted.
void MacKeyboardTap::disabled(CGEventType type) {
    const bool timedOut = type == kCGEventTapDisabledByTimeout;
    sayThatItIsLost(timedOut ? "the main thread did not answer in time" : "the system disabled it for its user");
    remove();
}

void MacKeyboardTap::leave(const char* why) {
    if (!eventTap_) return;
    sayThatItIsLost(why);
    remove();
}

void MacKeyboardTap::sayThatItIsLost(const char* why) {
    if (std::exchange(isSaid_, true)) return;
    @autoreleasepool {
        sayThatTheTapIsLost(MacISO8601DateFormatter().string(MacClock().secondsSince1970()), why);
    }
}

CGEventRef MacKeyboardTap::handle(CGEventTapProxy, CGEventType type, CGEventRef event, void* userInfo) {
    const auto* rules = static_cast<const Rules*>(userInfo);
    if (rules == nullptr) return event;
    if (type == kCGEventTapDisabledByTimeout || type == kCGEventTapDisabledByUserInput) rules->tap->disabled(type);
    const std::string_view name = rules->decision(keyEvent(type, event));
    if (name.empty()) return event;
    // The report may destroy the tap, and the rules with it.
    const auto report = rules->report;
    @autoreleasepool {
        if (*report) (*report)(name);
    }
    return nullptr;
}

std::unique_ptr<KeyboardTap> MacKeyboardTaps::create(KeyDecision decision, KeyReport report) {
    requireMainThread("create");
    return MacKeyboardTap::create(decision, std::move(report));
}

}  // namespace vantrel::macos
