#include "platform/macos/ui/VantrelApplicationDelegate.h"

#include <utility>

static_assert(static_cast<NSUInteger>(vantrel::TerminateReply::cancel) == NSTerminateCancel);
static_assert(static_cast<NSUInteger>(vantrel::TerminateReply::now) == NSTerminateNow);

@implementation VantrelApplicationDelegate {
    std::weak_ptr<vantrel::ApplicationDelegate> _receiver;
}

- (void)setReceiver:(std::weak_ptr<vantrel::ApplicationDelegate>)receiver {
    _receiver = std::move(receiver);
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    (void)notification;
    if (const auto receiver = _receiver.lock()) receiver->applicationDidFinishLaunching();
}

- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)sender {
    (void)sender;
    const auto receiver = _receiver.lock();
    if (!receiver) return NSTerminateNow;
    return static_cast<NSApplicationTerminateReply>(receiver->applicationShouldTerminate());
}

@end
