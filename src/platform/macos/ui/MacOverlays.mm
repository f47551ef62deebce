#include "platform/macos/ui/MacOverlays.h"

#include "platform/macos/bridge/RectBridge.h"
#include "platform/macos/threads/MainThread.h"

namespace vantrel::macos {

static_assert((NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorStationary |
               NSWindowCollectionBehaviorIgnoresCycle) == 0x51);
static_assert(NSWindowStyleMaskBorderless == 0 && NSBackingStoreBuffered == 2);

MacOverlay::MacOverlay(const OverlayDescription& description) {
    const NSRect frame = cgRect(description.frame);
    window_ = [[BlackoutWindow alloc] initWithContentRect:frame
                                                styleMask:NSWindowStyleMaskBorderless
                                                  backing:NSBackingStoreBuffered
                                                    defer:NO];
    window_.level = description.level;
    window_.backgroundColor = NSColor.blackColor;
    window_.opaque = YES;
    window_.hasShadow = NO;
    window_.collectionBehavior = static_cast<NSWindowCollectionBehavior>(description.collectionBehavior);
    window_.releasedWhenClosed = NO;
    window_.hidesOnDeactivate = NO;
    window_.movable = NO;
    // Otherwise another application's "Hide Others" would uncover the display.
    window_.canHide = NO;
    window_.ignoresMouseEvents = NO;
    [window_ setUpContentWithSize:frame.size labels:description.labels];
    // Set again: a window may be created on a display other than that of its frame.
    [window_ setFrame:frame display:NO];
}

MacOverlay::~MacOverlay() {
    orderOut();
    close();
}

void MacOverlay::setLevel(int level) {
    requireMainThread("setLevel");
    window_.level = level;
}

void MacOverlay::orderFrontRegardless() {
    requireMainThread("orderFrontRegardless");
    [window_ orderFrontRegardless];
}

void MacOverlay::orderOut() {
    requireMainThread("orderOut");
    [window_ orderOut:nil];
}

void MacOverlay::close() {
    requireMainThread("close");
    [window_ close];
    window_ = nil;
}

std::unique_ptr<Overlay> MacOverlays::makeOverlay(const OverlayDescription& description) {
    requireMainThread("makeOverlay");
    return std::make_unique<MacOverlay>(description);
}

}  // namespace vantrel::macos
