// What the stand-ins promise about Apple's frameworks, each with the page that it stands on. The same file is built
// over the stand-ins and over the frameworks themselves. VANTREL_ASSUMPTIONS names the file that gets a line for each:
// assumption, page, expected, seen. docs/macos.md lists them; check_assumptions.py holds that list.
#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>
#import <CoreFoundation/CoreFoundation.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/macos/bridge/CFReference.h"
#include "platform/macos/bridge/Text.h"
#include "tests/contracts/ContractTest.h"
#include "tests/contracts/StoppingHost.h"

@interface VantrelAssumptionTarget : NSObject
- (void)act:(id)sender;
@end

@implementation VantrelAssumptionTarget {
  @public
    int _acts;
}

- (void)act:(id)sender {
    (void)sender;
    ++_acts;
}

@end

@interface VantrelAssumptionDelegate : NSObject <NSApplicationDelegate>
@end

@implementation VantrelAssumptionDelegate
@end

namespace vantrel::macos {
namespace {

class MacAssumptions : public contracts::ContractTest {
  protected:
    void page(std::string address) { page_ = std::move(address); }

    void assume(const std::string& expected, const std::string& seen) {
        EXPECT_EQ(seen, expected) << page_;
        const char* const path = std::getenv("VANTREL_ASSUMPTIONS");
        if (path == nullptr) return;
        const char* const name = testing::UnitTest::GetInstance()->current_test_info()->name();
        std::ofstream(path, std::ios::app) << name << '\t' << page_ << '\t' << expected << '\t' << seen << '\n';
    }

    /// The name of the exception that the block throws.
    static std::string raised(void (^block)(void)) {
        @try {
            block();
        } @catch (NSException* exception) {
            return bytesOf(exception.name);
        }
        return "nothing";
    }

    /// In an event, opens an alert under which the steps were begun, and tells what has been noted before its answer.
    std::string notedUnderAnAlert(const std::function<void(const Block&)>& begin) {
        begin([] {
            NSAlert* alert = [[NSAlert alloc] init];
            [alert addButtonWithTitle:lenientText("Continua")];
            [alert runModal];
        });
        host().letTimePass(0.5);
        std::string before;
        for (const std::string& each : notes()) before += (before.empty() ? "" : ", ") + each;
        host().pressAlertButton("Continua");
        EXPECT_TRUE(eventually([this] { return !notes().empty(); }));
        return before.empty() ? "nothing" : before;
    }

  private:
    std::string page_;
};

TEST_F(MacAssumptions, TerminatedChangesOnATurnOfTheMainRunLoopOnly) {
    page("https://developer.apple.com/documentation/appkit/nsrunningapplication");
    constexpr int killSignal = 9;
    const ProcessIdentifier process = host().startPeerWithoutWaiting();
    ASSERT_TRUE(eventually([&] { return computer().runningApplications.withProcessIdentifier(process) != nullptr; }));
    NSRunningApplication* application = nil;
    std::string seen;
    host().onMain([&] {
        application = [NSRunningApplication runningApplicationWithProcessIdentifier:process];
        computer().processLauncher.sendSignal(process, killSignal);
        [NSThread sleepForTimeInterval:2];
        seen = application.terminated ? "ended" : "runs";
    });
    EXPECT_TRUE(eventually([&] {
        bool ended = false;
        host().onMain([&] { ended = application.terminated; });
        return ended;
    }));
    assume("runs", seen);
}

// Nothing else that a test can bring about could change it.
TEST_F(MacAssumptions, AnApplicationThatHasEndedKeepsItsNameUntilATurnOfTheMainRunLoop) {
    page("https://developer.apple.com/documentation/appkit/nsrunningapplication");
    constexpr int killSignal = 9;
    const ProcessIdentifier process = host().startPeerWithoutWaiting();
    ASSERT_TRUE(eventually([&] { return computer().runningApplications.withProcessIdentifier(process) != nullptr; }));
    std::string seen;
    host().onMain([&] {
        NSRunningApplication* application = [NSRunningApplication runningApplicationWithProcessIdentifier:process];
        computer().processLauncher.sendSignal(process, killSignal);
        [NSThread sleepForTimeInterval:2];
        seen = bytesOf(application.localizedName);
    });
    assume("Google Chrome", seen);
}

TEST_F(MacAssumptions, TheListOfApplicationsGrowsOnATurnOfTheMainRunLoopOnly) {
    page("https://developer.apple.com/documentation/appkit/nsworkspace/runningapplications");
    const auto count = [] {
        return [NSRunningApplication runningApplicationsWithBundleIdentifier:@"com.google.Chrome"].count;
    };
    std::string seen;
    host().onMain([&] {
        computer().processLauncher.launch(host().peerExecutable(), {});
        [NSThread sleepForTimeInterval:3];
        seen = count() == 0 ? "not listed" : "listed";
    });
    EXPECT_TRUE(eventually([&] {
        NSUInteger listed = 0;
        host().onMain([&] { listed = count(); });
        return listed == 1;
    }));
    assume("not listed", seen);
}

TEST_F(MacAssumptions, AnElementOfAnApplicationThatHasEndedCannotBeAsked) {
    page("https://developer.apple.com/documentation/applicationservices/1462085-axuielementcopyattributevalue");
    if (const auto missing = host().obstacle("WindowContract")) GTEST_SKIP() << *missing;
    constexpr int killSignal = 9;
    const ProcessIdentifier process = host().startPeerWithoutWaiting();
    ASSERT_TRUE(eventually([&] { return computer().runningApplications.withProcessIdentifier(process) != nullptr; }));
    const auto application = CFReference<AXUIElementRef>::created(AXUIElementCreateApplication(process));
    computer().processLauncher.sendSignal(process, killSignal);
    EXPECT_TRUE(eventually([&] { return !computer().runningApplications.withProcessIdentifier(process); }));
    CFTypeRef value = nullptr;
    const AXError error = AXUIElementCopyAttributeValue(application.get(), (__bridge CFStringRef) @"AXWindows", &value);
    const auto answer = CFReference<CFTypeRef>::copied(value);
    assume("no value, and an error",
           std::string(answer ? "a value" : "no value") + (error != kAXErrorSuccess ? ", and an error" : ""));
}

TEST_F(MacAssumptions, ACallToAnApplicationThatDoesNotAnswerWaitsItsTimeOut) {
    page("https://developer.apple.com/documentation/applicationservices/1459345-axuielementsetmessagingtimeout");
    if (const auto missing = host().obstacle("WindowContract")) GTEST_SKIP() << *missing;
    constexpr float timeOut = 0.75;
    const ProcessIdentifier process = host().startPeerWithoutWaiting();
    ASSERT_TRUE(eventually([&] { return computer().runningApplications.withProcessIdentifier(process) != nullptr; }));
    dynamic_cast<contracts::StoppingHost&>(host()).stop(process);
    std::string seen;
    host().onMain([&] {
        const auto all = CFReference<AXUIElementRef>::created(AXUIElementCreateSystemWide());
        const auto application = CFReference<AXUIElementRef>::created(AXUIElementCreateApplication(process));
        AXUIElementSetMessagingTimeout(all.get(), timeOut);
        const double start = now();
        CFTypeRef value = nullptr;
        const AXError error =
            AXUIElementCopyAttributeValue(application.get(), (__bridge CFStringRef) @"AXWindows", &value);
        const auto answer = CFReference<CFTypeRef>::copied(value);
        seen = now() - start >= timeOut - tolerance ? "late" : "early";
        AXUIElementSetMessagingTimeout(all.get(), 0);
        seen += error == kAXErrorCannotComplete ? ", cannot complete" : ", another answer";
    });
    assume("late, cannot complete", seen);
}

TEST_F(MacAssumptions, EachActivityHasATokenOfItsOwn) {
    page("https://developer.apple.com/documentation/foundation/processinfo/beginactivity(options:reason:)");
    @autoreleasepool {
        NSProcessInfo* info = NSProcessInfo.processInfo;
        id<NSObject> first = [info beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep reason:@"a"];
        id<NSObject> second = [info beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                                      reason:@"a"];
        const bool differ = first != second;
        [info endActivity:first];
        [info endActivity:second];
        assume("two", differ ? "two" : "one");
    }
}

// What it does to the system has no public question. Its token tells whether somebody keeps it. Only the header
// NSProcessInfo.h says that an activity ends with its token.
TEST_F(MacAssumptions, AnActivityEndsWithItsToken) {
    page("https://developer.apple.com/documentation/foundation/processinfo/beginactivity(options:reason:)");
    NSProcessInfo* info = NSProcessInfo.processInfo;
    __weak id<NSObject> token = nil;
    @autoreleasepool {
        token = [info beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep reason:@"a"];
    }
    @autoreleasepool {
        id<NSObject> left = token;
        assume("over", left != nil ? "goes on" : "over");
        if (left != nil) [info endActivity:left];
    }
}

TEST_F(MacAssumptions, AnObserverThatIsNotRemovedIsCalledOnItsQueue) {
    page("https://developer.apple.com/documentation/foundation/notificationcenter/"
         "addobserver(forname:object:queue:using:)");
    NSNotificationCenter* center = NSNotificationCenter.defaultCenter;
    NSNotificationName const name = @"VantrelAssumption";
    __weak id<NSObject> token = nil;
    @autoreleasepool {
        token = [center addObserverForName:name
                                    object:nil
                                     queue:NSOperationQueue.mainQueue
                                usingBlock:^(NSNotification*) {
                                  note(NSThread.isMainThread ? "called on the main thread" : "called elsewhere");
                                }];
    }
    dispatch_async(dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0), ^{
      [center postNotificationName:name object:nil];
    });
    const std::string seen = noted(1) ? notes().front() : "not called";
    host().onMain([&] {
        id<NSObject> left = token;
        if (left != nil) [center removeObserver:left];
    });
    assume("called on the main thread", seen);
}

TEST_F(MacAssumptions, ATimerThatIsLateFiresOnceAndKeepsItsGrid) {
    page("https://developer.apple.com/documentation/foundation/timer");
    double start = 0;
    const auto times = std::make_shared<std::vector<double>>();
    NSTimer* timer = nil;
    host().onMain([&] {
        start = now();
        timer = [NSTimer scheduledTimerWithTimeInterval:0.5
                                                repeats:YES
                                                  block:^(NSTimer*) {
                                                    times->push_back(now());
                                                  }];
        [NSThread sleepForTimeInterval:1.75];
    });
    std::vector<double> fired;
    EXPECT_TRUE(eventually([&] {
        host().onMain([&] { fired = *times; });
        return fired.size() >= 2;
    }));
    host().onMain([&] { [timer invalidate]; });
    // Late at 1.75; then the next moment of the grid, 2.0.
    assume("late, then on its grid",
           std::string(fired.at(0) - start >= 1.75 - tolerance ? "late" : "early") +
               (fired.at(1) - start >= 2.0 - tolerance ? ", then on its grid" : ", then early"));
}

TEST_F(MacAssumptions, ATimerHoldsItsBlockUntilItIsInvalidated) {
    page("https://developer.apple.com/documentation/foundation/timer/invalidate()");
    __weak NSObject* weak = nil;
    NSTimer* timer = nil;
    std::string seen;
    host().onMain([&] {
        NSObject* owned = [[NSObject alloc] init];
        weak = owned;
        timer = [NSTimer scheduledTimerWithTimeInterval:1000
                                                repeats:YES
                                                  block:^(NSTimer*) {
                                                    (void)owned;
                                                  }];
    });
    host().onMain([&] {
        seen = weak != nil ? "held" : "gone";
        [timer invalidate];
        timer = nil;
    });
    host().onMain([&] { seen += weak != nil ? ", held" : ", gone"; });
    assume("held, gone", seen);
}

TEST_F(MacAssumptions, AnAlertRunsNoTimerOfTheDefaultMode) {
    page("https://developer.apple.com/documentation/appkit/nsapplication/runmodal(for:)");
    const std::string seen = notedUnderAnAlert([this](const Block& alert) {
        host().postToMain([this, alert] {
            [NSTimer scheduledTimerWithTimeInterval:0.05
                                            repeats:NO
                                              block:^(NSTimer*) {
                                                note("timer");
                                              }];
            alert();
        });
    });
    assume("nothing", seen);
}

TEST_F(MacAssumptions, BlocksOfTheMainQueueWaitUnderAnAlertThatOneOfThemOpened) {
    page("https://github.com/swiftlang/swift-corelibs-foundation/blob/"
         "e55e1d88001997be830fbc01086564431d405dad/Sources/CoreFoundation/CFRunLoop.c");
    const std::string seen = notedUnderAnAlert([this](const Block& given) {
        // A block would keep the reference.
        const Block alert = given;
        dispatch_async(dispatch_get_main_queue(), ^{
          dispatch_async(dispatch_get_main_queue(), ^{
            note("block");
          });
          alert();
        });
    });
    assume("nothing", seen);
}

TEST_F(MacAssumptions, BlocksOfTheMainQueueRunUnderAnAlertThatAnEventOpened) {
    page("https://developer.apple.com/documentation/foundation/operationqueue/main");
    const std::string seen = notedUnderAnAlert([this](const Block& alert) {
        host().postToMain([this, alert] {
            dispatch_async(dispatch_get_main_queue(), ^{
              note("block");
            });
            alert();
        });
    });
    assume("block", seen);
}

TEST_F(MacAssumptions, ABlockOfTheCommonModesRunsUnderAnAlert) {
    page("https://developer.apple.com/documentation/corefoundation/cfrunloopperformblock(_:_:_:)");
    const std::string seen = notedUnderAnAlert([this](const Block& given) {
        const Block alert = given;
        dispatch_async(dispatch_get_main_queue(), ^{
          CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
            note("block");
          });
          CFRunLoopWakeUp(CFRunLoopGetMain());
          alert();
        });
    });
    assume("block", seen);
}

TEST_F(MacAssumptions, AnUnknownSelectorRaises) {
    page("https://developer.apple.com/documentation/objectivec/nsobject-swift.class/doesnotrecognizeselector(_:)");
    @autoreleasepool {
        id target = [[VantrelAssumptionTarget alloc] init];
        assume("NSInvalidArgumentException", raised(^{
                 (void)[(NSArray*)target count];
               }));
    }
}

TEST_F(MacAssumptions, NilInACollectionRaises) {
    page("https://developer.apple.com/documentation/foundation/nsmutablearray/add(_:)");
    @autoreleasepool {
        NSMutableArray* array = [NSMutableArray arrayWithCapacity:1];
        // Nil, whatever its type says.
        id _Nonnull nothing = (id _Nonnull)[NSUserDefaults.standardUserDefaults objectForKey:@"contract_nobody"];
        assume("NSInvalidArgumentException", raised(^{
                 [array addObject:nothing];
               }));
    }
}

TEST_F(MacAssumptions, ANumberThatIsNotFiniteRaisesInJSON) {
    page("https://developer.apple.com/documentation/foundation/jsonserialization/data(withjsonobject:options:)");
    @autoreleasepool {
        NSArray* array = @[ [NSNumber numberWithDouble:NAN] ];
        assume("NSInvalidArgumentException", raised(^{
                 (void)[NSJSONSerialization dataWithJSONObject:array options:0 error:nil];
               }));
    }
}

TEST_F(MacAssumptions, BytesThatAreNotUTF8MakeNoText) {
    page("https://developer.apple.com/documentation/foundation/nsstring/init(data:encoding:)");
    @autoreleasepool {
        NSString* text = [[NSString alloc] initWithBytes:"a\xff" length:2 encoding:NSUTF8StringEncoding];
        assume("nil", text == nil ? "nil" : "a text");
    }
}

TEST_F(MacAssumptions, ABooleanIsNoNumberForCoreFoundation) {
    page("https://developer.apple.com/documentation/foundation/nsnumber");
    @autoreleasepool {
        const auto isBoolean = [](NSNumber* number) {
            return CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID() ? "boolean" : "number";
        };
        assume("boolean, number",
               std::string(isBoolean([NSNumber numberWithBool:YES])) + ", " + isBoolean([NSNumber numberWithInt:1]));
    }
}

TEST_F(MacAssumptions, AMenuItemHoldsItsRepresentedObjectAndNotItsTarget) {
    page("https://developer.apple.com/documentation/appkit/nsmenuitem/target");
    std::string seen;
    host().onMain([&] {
        NSMenuItem* item = nil;
        __weak NSObject* target = nil;
        __weak NSObject* represented = nil;
        @autoreleasepool {
            item = [[NSMenuItem alloc] initWithTitle:@"" action:@selector(act:) keyEquivalent:@""];
            NSObject* first = [[VantrelAssumptionTarget alloc] init];
            NSObject* second = [[NSObject alloc] init];
            target = first;
            represented = second;
            item.target = first;
            item.representedObject = second;
        }
        seen = std::string(target != nil ? "held" : "gone") + ", " + (represented != nil ? "held" : "gone");
    });
    assume("gone, held", seen);
}

TEST_F(MacAssumptions, AControlDoesNotHoldItsTarget) {
    page("https://developer.apple.com/documentation/appkit/nscontrol/target");
    std::string seen;
    host().onMain([&] {
        NSButton* button = nil;
        __weak NSObject* target = nil;
        @autoreleasepool {
            NSObject* made = [[VantrelAssumptionTarget alloc] init];
            target = made;
            button = [NSButton buttonWithTitle:@"" target:made action:@selector(act:)];
        }
        seen = target != nil ? "held" : "gone";
        [button performClick:nil];
    });
    assume("gone", seen);
}

TEST_F(MacAssumptions, ADisabledButtonSendsNoAction) {
    page("https://developer.apple.com/documentation/appkit/nscell/performclick(_:)");
    std::string seen;
    host().onMain([&] {
        VantrelAssumptionTarget* target = [[VantrelAssumptionTarget alloc] init];
        NSButton* button = [NSButton buttonWithTitle:@"" target:target action:@selector(act:)];
        button.enabled = NO;
        [button performClick:nil];
        seen = std::to_string(target->_acts);
        button.enabled = YES;
        [button performClick:nil];
        seen += ", " + std::to_string(target->_acts);
    });
    assume("0, 1", seen);
}

TEST_F(MacAssumptions, TheApplicationDoesNotHoldItsDelegate) {
    page("https://developer.apple.com/documentation/appkit/nsapplication/delegate");
    std::string seen;
    host().onMain([&] {
        NSApplication* application = NSApplication.sharedApplication;
        id<NSApplicationDelegate> before = application.delegate;
        __weak NSObject* weak = nil;
        @autoreleasepool {
            VantrelAssumptionDelegate* made = [[VantrelAssumptionDelegate alloc] init];
            weak = made;
            application.delegate = made;
        }
        seen = weak != nil ? "held" : "gone";
        application.delegate = before;
    });
    assume("gone", seen);
}

TEST_F(MacAssumptions, AWindowMadeInCodeIsReleasedWhenItIsClosed) {
    page("https://developer.apple.com/documentation/appkit/nswindow/isreleasedwhenclosed");
    std::string seen;
    host().onMain([&] {
        NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 100, 100)
                                                       styleMask:NSWindowStyleMaskTitled
                                                         backing:NSBackingStoreBuffered
                                                           defer:YES];
        seen = window.releasedWhenClosed ? "yes" : "no";
        window.releasedWhenClosed = NO;
        [window close];
    });
    assume("yes", seen);
}

}  // namespace
}  // namespace vantrel::macos
