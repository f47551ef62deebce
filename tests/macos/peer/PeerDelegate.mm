#include "tests/macos/peer/PeerDelegate.h"

#include "platform/macos/bridge/Text.h"
#include "tests/macos/peer/PeerApplication.h"

@implementation PeerDelegate {
    vantrel::peer::PeerOptions _options;
    NSMutableArray<NSWindow*>* _windows;
    std::filesystem::path _keyFile;
}

- (void)recordKeysInto:(const std::filesystem::path&)file {
    _keyFile = file;
}

- (void)setOptions:(const vantrel::peer::PeerOptions&)options {
    _options = options;
}

- (NSWindow*)windowOf:(const vantrel::peer::PeerWindowOption&)option {
    // Points count from the top left of the primary display, which is the first.
    const double top = NSScreen.screens[0].frame.size.height;
    const double width = option.width;
    const double height = option.height;
    NSWindow* window =
        [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, width, height)
                                    styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                              NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable
                                      backing:NSBackingStoreBuffered
                                        defer:NO];
    window.releasedWhenClosed = NO;
    window.collectionBehavior = NSWindowCollectionBehaviorFullScreenPrimary;
    window.title = vantrel::macos::lenientText(option.title);
    [window setFrame:NSMakeRect(option.x, top - option.y - height, width, height) display:NO];
    return window;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    (void)notification;
    _windows = [NSMutableArray arrayWithCapacity:_options.windows.size()];
    for (const auto& option : _options.windows) {
        NSWindow* window = [self windowOf:option];
        [_windows addObject:window];
        [window makeKeyAndOrderFront:nil];
    }
    if (_windows.count == 0) return;
    if (@available(macOS 14.0, *)) {
        [NSApplication.sharedApplication activate];
    } else {
        [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
    }
}

- (void)applicationDidBecomeActive:(NSNotification*)notification {
    (void)notification;
    if (!_keyFile.empty()) [static_cast<PeerApplication*>(PeerApplication.sharedApplication) recordKeysInto:_keyFile];
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender {
    (void)sender;
    return _options.exitsWithoutWindows;
}

- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)sender {
    (void)sender;
    return _options.ignoresTerminate ? NSTerminateCancel : NSTerminateNow;
}

- (void)application:(NSApplication*)application openURLs:(NSArray<NSURL*>*)urls {
    (void)application;
    (void)urls;
}

@end
