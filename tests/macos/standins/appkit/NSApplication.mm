#import <AppKit/AppKit.h>

#include <memory>
#include <utility>
#include <vector>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/appkit/MenuDescription.h"
#include "tests/macos/standins/appkit/NSWindow+Virtual.h"
#include "tests/macos/standins/appkit/OwnApplication.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Classes.h"

using namespace vantrel::standins;

__kindof NSApplication* NSApp;
NSNotificationName NSApplicationDidChangeScreenParametersNotification =
    @"NSApplicationDidChangeScreenParametersNotification";

namespace {

/// Forwards the virtual Mac's calls to AppKit's delegate.
class DelegateRelay final : public vantrel::ApplicationDelegate {
  public:
    void applicationDidFinishLaunching() override {
        withPool([] {
            id<NSApplicationDelegate> delegate = NSApp.delegate;
            if (![delegate respondsToSelector:@selector(applicationDidFinishLaunching:)]) return;
            [delegate applicationDidFinishLaunching:[[NSNotification alloc] init]];
        })();
    }

    vantrel::TerminateReply applicationShouldTerminate() override {
        auto reply = NSTerminateNow;
        withPool([&reply] {
            id<NSApplicationDelegate> delegate = NSApp.delegate;
            if (![delegate respondsToSelector:@selector(applicationShouldTerminate:)]) return;
            reply = [delegate applicationShouldTerminate:NSApp];
        })();
        return static_cast<vantrel::TerminateReply>(reply);
    }
};

}  // namespace

@implementation NSApplication {
    __weak id<NSApplicationDelegate> _delegate;
    NSMenu* _mainMenu;
    std::shared_ptr<DelegateRelay> _relay;
    bool _isOrderingPrevented;
    NSWindow* _modalWindow;
    // Stopped, and waiting for an event.
    NSWindow* _stoppedWindow;
    NSModalResponse _response;
}

// Created off the main thread, it would have no event loop.
+ (NSApplication*)sharedApplication {
    if (NSApp != nil) return NSApp;
    if (!mac().engine().isMainThread()) fatal("the first sharedApplication off the main thread");
    NSApp = [[NSApplication alloc] init];
    return NSApp;
}

- (id<NSApplicationDelegate>)delegate {
    return _delegate;
}

- (void)setDelegate:(id<NSApplicationDelegate>)delegate {
    requireMain("-[NSApplication setDelegate:]");
    _delegate = delegate;
    _relay = delegate == nil ? nullptr : std::make_shared<DelegateRelay>();
    mac().parts().application.setDelegate(_relay);
}

- (NSMenu*)mainMenu {
    return _mainMenu;
}

- (void)setMainMenu:(NSMenu*)menu {
    requireMain("setMainMenu:");
    _mainMenu = menu;
    mac().parts().application.setMainMenu(descriptionOf(menu));
}

- (NSWindow*)modalWindow {
    return _modalWindow;
}

- (NSWindow*)vantrel_setModalWindow:(NSWindow*)window {
    NSWindow* const before = _modalWindow;
    _modalWindow = window;
    return before;
}

- (BOOL)isActive {
    return mac().activations().isClientInFront();
}

- (BOOL)isHidden {
    return mac().application().isHidden();
}

- (void)unhideWithoutActivation {
    requireMain("unhideWithoutActivation");
    mac().application().unhide();
}

// It activates the application too, if the system lets it, which is not stood in for.
- (void)unhide:(id)sender {
    (void)sender;
    requireMain("unhide:");
    mac().application().unhide();
}

- (NSArray<NSWindow*>*)windows {
    return [NSWindow vantrel_all];
}

- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy {
    requireMain("setActivationPolicy:");
    mac().parts().application.setActivationPolicy(static_cast<vantrel::ActivationPolicy>(policy));
    return YES;
}

- (void)activate {
    requireMain("-[NSApplication activate]");
    if (!systemIsAtLeast(14)) raise(@"NSInvalidArgumentException", @"activate: unrecognized selector");
    mac().application().requestActivation();
}

- (void)yieldActivationToApplicationWithBundleIdentifier:(NSString*)bundleIdentifier {
    requireMain("yieldActivationToApplicationWithBundleIdentifier:");
    if (!systemIsAtLeast(14)) raise(@"NSInvalidArgumentException", @"yieldActivation…: unrecognized selector");
    if (self.active) mac().activations().yieldTo(bytesOf(bundleIdentifier));
}

// From macOS 14 on it does no more than activate, which has been asked before.
- (void)activateIgnoringOtherApps:(BOOL)ignore {
    requireMain("activateIgnoringOtherApps:");
    if (!ignore) fatal("an activation that other applications may decline");
    if (systemIsAtLeast(14)) return;
    mac().application().requestActivation();
}

- (void)run {
    requireMain("-[NSApplication run]");
    mac().parts().application.run();
}

- (void)terminate:(id)sender {
    requireMain("terminate:");
    (void)sender;
    mac().parts().application.terminate();
}

- (void)preventWindowOrdering {
    _isOrderingPrevented = true;
}

- (bool)vantrel_wasOrderingPrevented {
    return std::exchange(_isOrderingPrevented, false);
}

- (void)sendEvent:(NSEvent*)event {
    (void)event;
    raise(@"NSInvalidArgumentException", @"events are not stood in for");
}

// Of a modal loop that a timer stops, Apple promises its end with the next event only.
- (void)stopModalWithCode:(NSModalResponse)returnCode {
    requireMain("stopModalWithCode:");
    if (_modalWindow == nil) fatal("an end without a modal session");
    _stoppedWindow = _modalWindow;
    _response = returnCode;
}

- (void)postEvent:(NSEvent*)event atStart:(BOOL)atStart {
    (void)atStart;
    if (event.type != NSEventTypeApplicationDefined) fatal("an event that is not stood in for");
    NSWindow* const stopped = std::exchange(_stoppedWindow, nil);
    if (stopped != nil && stopped == _modalWindow) [(id<VantrelModalWindow>)stopped vantrel_endWith:_response];
}

@end

namespace vantrel::standins {

void forgetOwnApplication() {
    NSApp = nil;
}

}  // namespace vantrel::standins
