// Shows an alert over another application's full screen and prints what becomes of it; see README.md.
#import <AppKit/AppKit.h>

#include <cstdio>
#include <cstring>

#ifndef PROBE_VARIANT
#define PROBE_VARIANT 6
#endif

namespace {

constexpr int variant = PROBE_VARIANT;
constexpr NSTimeInterval beforeTheAlert = 10;
constexpr NSTimeInterval untilTheSecondStep = 1;
constexpr NSTimeInterval untilTheThirdStep = 2;
constexpr NSTimeInterval betweenLines = 0.5;
constexpr NSTimeInterval withoutAnAnswer = 15;

constexpr NSWindowCollectionBehavior everywhere =
    NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorFullScreenAuxiliary;

// For the one who runs it, so in no other language.
NSString* text(const char* characters) {
    return [[NSString alloc] initWithBytes:characters length:std::strlen(characters) encoding:NSUTF8StringEncoding];
}

bool isSeen(NSWindow* panel) {
    return (panel.occlusionState & NSWindowOcclusionStateVisible) != 0;
}

NSTimer* underTheAlert(NSTimeInterval seconds, BOOL repeats, void (^block)(NSTimer*)) {
    NSTimer* timer = [NSTimer timerWithTimeInterval:seconds repeats:repeats block:block];
    [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
    return timer;
}

void printLine(double seconds, NSWindow* panel) {
    NSString* front = NSWorkspace.sharedWorkspace.frontmostApplication.localizedName;
    std::printf("variant %d, %.1f s: %s, %s, in front: %s\n", variant, seconds, isSeen(panel) ? "seen" : "not seen",
                NSApplication.sharedApplication.active ? "active" : "not active",
                front != nil ? front.UTF8String : "none");
    std::fflush(stdout);
}

void prepare(NSWindow* panel) {
    panel.level = NSModalPanelWindowLevel;
    panel.hidesOnDeactivate = NO;
    panel.canHide = NO;
    if (variant >= 2) panel.styleMask |= NSWindowStyleMaskNonactivatingPanel;
    if (variant >= 1) panel.collectionBehavior = everywhere;
    if (variant == 4) panel.collectionBehavior = everywhere | NSWindowCollectionBehaviorCanJoinAllApplications;
}

void takeSecondStep(NSWindow* panel) {
    if (isSeen(panel)) return;
    if (variant >= 5) panel.collectionBehavior = everywhere | NSWindowCollectionBehaviorCanJoinAllApplications;
    if (variant == 3 || variant >= 5) [panel orderFrontRegardless];
}

void takeThirdStep(NSWindow* panel) {
    if (variant != 6 || isSeen(panel)) return;
    if (@available(macOS 14.0, *)) {
        [NSApplication.sharedApplication activate];
    } else {
        [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
    }
}

void ask() {
    NSAlert* alert = [[NSAlert alloc] init];
    alert.messageText = text("Vantrel");
    alert.informativeText = text("This is seen: click the button.");
    [alert addButtonWithTitle:text("OK")];
    NSWindow* panel = alert.window;
    prepare(panel);
    __block double seconds = 0;
    NSTimer* lines = underTheAlert(betweenLines, YES, ^(NSTimer*) {
      seconds += betweenLines;
      printLine(seconds, panel);
    });
    NSTimer* step = underTheAlert(untilTheSecondStep, NO, ^(NSTimer*) {
      takeSecondStep(panel);
    });
    NSTimer* third = underTheAlert(untilTheThirdStep, NO, ^(NSTimer*) {
      takeThirdStep(panel);
    });
    NSTimer* end = underTheAlert(withoutAnAnswer, NO, ^(NSTimer*) {
      std::printf("variant %d: nobody has answered\n", variant);
      [NSApplication.sharedApplication terminate:nil];
    });
    [alert runModal];
    [lines invalidate];
    [step invalidate];
    [third invalidate];
    [end invalidate];
    std::printf("variant %d, %.1f s: answered\n", variant, seconds);
    [NSApplication.sharedApplication terminate:nil];
}

}  // namespace

int main() {
    @autoreleasepool {
        NSApplication* application = NSApplication.sharedApplication;
        [application setActivationPolicy:NSApplicationActivationPolicyRegular];
        underTheAlert(beforeTheAlert, NO, ^(NSTimer*) {
          ask();
        });
        [application run];
    }
    return 0;
}
