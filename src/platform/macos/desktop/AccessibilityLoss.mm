#include "platform/macos/desktop/AccessibilityLoss.h"

#import <AppKit/AppKit.h>

#include <utility>
#include <vector>

#include "platform/macos/bridge/CFReference.h"
#include "platform/macos/desktop/AccessibilityTimeout.h"
#include "platform/macos/threads/MacClock.h"
#include "platform/portable/LostTap.h"

namespace vantrel::macos {

namespace {

// Main thread.
std::vector<AccessibilityLoss*>& living() {
    static auto& losses = *new std::vector<AccessibilityLoss*>;
    return losses;
}

// Of the system itself. No page says that it does not pass the question on to the application in front, which may not
// answer. Two waits in a row would be too long for the tap.
AXError askForTheFocus() {
    const MacClock clock;
    const pid_t front = NSWorkspace.sharedWorkspace.frontmostApplication.processIdentifier;
    const double asked = clock.uptime();
    if (AccessibilityTimeout::refuses(front, asked)) return kAXErrorCannotComplete;
    CFTypeRef copied = nullptr;
    const auto systemWide = CFReference<AXUIElementRef>::created(AXUIElementCreateSystemWide());
    const AXError error =
        AXUIElementCopyAttributeValue(systemWide.get(), (__bridge CFStringRef) @"AXFocusedApplication", &copied);
    const auto focus = CFReference<CFTypeRef>::copied(copied);
    const double answered = clock.uptime();
    if (error == kAXErrorCannotComplete) AccessibilityTimeout::noteFailure(front, answered - asked, answered);
    return error;
}

void look() {
    @autoreleasepool {
        AccessibilityLoss::note(AXIsProcessTrusted() ? askForTheFocus() : kAXErrorAPIDisabled);
    }
}

NSTimer* startedLooks() {
    @autoreleasepool {
        NSTimer* looks = [NSTimer timerWithTimeInterval:betweenLooksForLostTrust
                                                repeats:YES
                                                  block:^(NSTimer*) {
                                                    look();
                                                  }];
        [NSRunLoop.mainRunLoop addTimer:looks forMode:NSRunLoopCommonModes];
        return looks;
    }
}

CGEventRef letPass(CGEventTapProxy, CGEventType, CGEventRef event, void*) {
    return event;
}

}  // namespace

AccessibilityLoss::AccessibilityLoss(Block told) : told_(std::move(told)), looks_(startedLooks()) {
    living().push_back(this);
}

AccessibilityLoss::~AccessibilityLoss() {
    [looks_ invalidate];
    std::erase(living(), this);
}

// Who was deleted from the list, and not just switched off there, may still be called trusted, but is refused another
// filter. Such a filter is in the system for a moment, so it is not asked for often.
bool AccessibilityLoss::isAnotherTapGiven() {
    const double now = MacClock().uptime();
    if (now < nextAsking_) return true;
    const auto tap = CFReference<CFMachPortRef>::created(
        CGEventTapCreate(kCGSessionEventTap, kCGHeadInsertEventTap, kCGEventTapOptionDefault,
                         CGEventMaskBit(kCGEventKeyDown), &letPass, nullptr));
    if (!tap) return false;
    CFMachPortInvalidate(tap.get());
    nextAsking_ = now + betweenLooksForLostTrust;
    return true;
}

void AccessibilityLoss::examine() {
    if (living().empty() || (AXIsProcessTrusted() && living().front()->isAnotherTapGiven())) return;
    std::vector<Block> blocks;
    for (const AccessibilityLoss* loss : living()) blocks.push_back(loss->told_);
    for (const Block& told : blocks) told();
}

void AccessibilityLoss::note(AXError error) {
    if (error != kAXErrorAPIDisabled) return;
    if (NSThread.isMainThread) return examine();
    // Not the main queue, which waits under a question that one of its blocks has asked.
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
      examine();
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

}  // namespace vantrel::macos
