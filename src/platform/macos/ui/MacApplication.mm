#include "platform/macos/ui/MacApplication.h"

#include <utility>

#include "platform/macos/threads/MainThread.h"
#include "platform/macos/ui/ClientFront.h"
#include "platform/macos/ui/MenuBuilder.h"

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

namespace vantrel::macos {

static_assert(static_cast<NSInteger>(ActivationPolicy::regular) == NSApplicationActivationPolicyRegular);

namespace {

NSApplication* sharedApplication() {
    requireMainThread("sharedApplication");
    return NSApplication.sharedApplication;
}

}  // namespace

MacApplication::MacApplication()
    : application_(sharedApplication()), forwarder_([[VantrelApplicationDelegate alloc] init]) {}

MacApplication::~MacApplication() {
    application_.delegate = nil;
}

void MacApplication::setActivationPolicy(ActivationPolicy policy) {
    requireMainThread("setActivationPolicy");
    [application_ setActivationPolicy:static_cast<NSApplicationActivationPolicy>(policy)];
}

void MacApplication::setDelegate(std::weak_ptr<ApplicationDelegate> delegate) {
    requireMainThread("setDelegate");
    [forwarder_ setReceiver:std::move(delegate)];
    application_.delegate = forwarder_;
}

void MacApplication::setMainMenu(const Menu& menu) {
    requireMainThread("setMainMenu");
    application_.mainMenu = appKitMenu(menu);
}

void MacApplication::run() {
    requireMainThread("run");
    [application_ run];
}

void MacApplication::activate() {
    requireMainThread("activate");
    bringClientToFront(application_);
}

void MacApplication::terminate() {
    requireMainThread("terminate");
    [application_ terminate:nil];
}

}  // namespace vantrel::macos
