#include "platform/macos/desktop/AccessibilityLoss.h"

#import <Foundation/Foundation.h>

#include <utility>
#include <vector>

namespace vantrel::macos {

namespace {

// Main thread.
std::vector<AccessibilityLoss*>& living() {
    static auto& losses = *new std::vector<AccessibilityLoss*>;
    return losses;
}

}  // namespace

AccessibilityLoss::AccessibilityLoss(Block told) : told_(std::move(told)) {
    living().push_back(this);
}

AccessibilityLoss::~AccessibilityLoss() {
    std::erase(living(), this);
}

void AccessibilityLoss::tell() {
    const std::vector<AccessibilityLoss*> all = living();
    for (const AccessibilityLoss* loss : all) loss->told_();
}

void AccessibilityLoss::note(AXError error) {
    if (error != kAXErrorAPIDisabled || AXIsProcessTrusted()) return;
    if (NSThread.isMainThread) return tell();
    // Not the main queue, which waits under a question that one of its blocks has asked.
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
      tell();
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

}  // namespace vantrel::macos
