#import <AppKit/AppKit.h>

#include <memory>
#include <string>
#include <variant>

#include "platform/macos/ui/BlackoutWindow.h"
#include "platform/macos/ui/MenuBuilder.h"
#include "tests/contracts/ContractTest.h"
#include "tests/macos/contracts/EmptyEvent.h"

/// Keeps what a cover tells the system about its cursor.
@interface VantrelCursorWitness : BlackoutContentView {
  @public
    NSRect _rect;
    NSCursor* _cursor;
}
@end

@implementation VantrelCursorWitness

- (void)addCursorRect:(NSRect)rect cursor:(NSCursor*)cursor {
    _rect = rect;
    _cursor = cursor;
}

@end

namespace vantrel::macos {
namespace {

constexpr int coverLevel = 1000;

/// What only AppKit's own objects show: where an alert may appear, where a click on a cover goes, how a field takes a
/// long text.
class MacPanels : public contracts::ContractTest {
  protected:
    void ask() {
        host().postToMain([this] {
            computer().alerts.runModal({AlertStyle::warning, "Domanda", "Perché?", {"Continua"}});
            note("answered");
        });
        ASSERT_TRUE(eventually([this] {
            bool up = false;
            host().onMain([&] { up = panel() != nil; });
            return up;
        }));
    }

    void answer() {
        host().pressAlertButton("Continua");
        ASSERT_TRUE(noted(1));
    }

    static WindowDescription withAField() {
        Control field;
        field.kind = Control::Kind::textField;
        field.id = "field";
        field.frame = {{20, 20}, {100, 24}};
        View view;
        view.frame = {{0, 0}, {300, 200}};
        view.controls = {field};
        WindowDescription description;
        description.contentRect = {{0, 0}, {300, 200}};
        description.styleMask = windowTitled | windowClosable;
        description.title = "Vantrel";
        description.views = {view};
        return description;
    }

    static NSWindow* panel() { return NSApplication.sharedApplication.modalWindow; }

    NSMenu* kept_ = nil;

    static constexpr NSWindowCollectionBehavior everywhere =
        NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorFullScreenAuxiliary;
};

TEST_F(MacPanels, AnAlertOfAClientWithoutAWindowIsLetInEverywhere) {
    ask();
    host().onMain([] {
        NSWindow* alert = panel();
        EXPECT_EQ(alert.collectionBehavior & everywhere, everywhere);
        EXPECT_GE(alert.level, NSModalPanelWindowLevel);
        EXPECT_FALSE(alert.canHide);
        EXPECT_FALSE(alert.hidesOnDeactivate);
    });
    answer();
}

TEST_F(MacPanels, AnAlertOfAClientWithoutAWindowAsksNotToActivateIt) {
    ask();
    bool asks = false;
    host().onMain([&asks] { asks = (panel().styleMask & NSWindowStyleMaskNonactivatingPanel) != 0; });
    answer();
    granted(asks, host().mayDeclineAlerts());
}

TEST_F(MacPanels, AnAlertThatIsSeenIsLeftAsItIs) {
    ask();
    host().letTimePass(1.5);
    bool isSeen = false;
    bool isLeft = false;
    host().onMain([&] {
        isSeen = (panel().occlusionState & NSWindowOcclusionStateVisible) != 0;
        isLeft = (panel().collectionBehavior & NSWindowCollectionBehaviorCanJoinAllApplications) == 0;
    });
    answer();
    if (granted(isSeen, host().mayDeclineAlerts())) {
        EXPECT_TRUE(isLeft);
    }
}

TEST_F(MacPanels, AnAlertComesUpAboveACover) {
    std::unique_ptr<Overlay> cover;
    host().onMain([&] {
        const auto screens = computer().screens.screens();
        ASSERT_FALSE(screens.empty());
        cover = computer().overlays.makeOverlay({screens.front().frame, coverLevel, 0x51, {}});
        cover->orderFrontRegardless();
    });
    ASSERT_TRUE(cover);
    ask();
    host().onMain([] { EXPECT_GT(panel().level, coverLevel); });
    answer();
    host().onMain([&] { cover.reset(); });
}

TEST_F(MacPanels, TheCursorOverAWholeCoverSaysThatNothingIsAllowed) {
    host().onMain([] {
        VantrelCursorWitness* view = [[VantrelCursorWitness alloc] initWithFrame:NSMakeRect(0, 0, 640, 480)];
        [view resetCursorRects];
        EXPECT_EQ(view->_rect.origin.x, 0);
        EXPECT_EQ(view->_rect.origin.y, 0);
        EXPECT_EQ(view->_rect.size.width, 640);
        EXPECT_EQ(view->_rect.size.height, 480);
        EXPECT_EQ(view->_cursor, NSCursor.operationNotAllowedCursor);
    });
}

TEST_F(MacPanels, AnAlertBesideTheClientsWindowIsAnOrdinaryOne) {
    std::unique_ptr<Window> window;
    host().onMain([&] {
        window = computer().windows.makeWindow(withAField(), {});
        window->makeKeyAndOrderFront();
    });
    ask();
    host().onMain([] {
        EXPECT_EQ(panel().collectionBehavior & NSWindowCollectionBehaviorCanJoinAllSpaces, 0U);
        EXPECT_LT(panel().level, coverLevel);
    });
    answer();
    host().onMain([&] { window.reset(); });
}

TEST_F(MacPanels, WhatWasInFrontBeforeAQuestionIsSoAfterItsAnswer) {
    const auto launched =
        computer().processLauncher.launch(host().peerExecutable(), {"--window=Lezione,60,80,500,300"});
    const auto* peer = std::get_if<ProcessIdentifier>(&launched);
    ASSERT_NE(peer, nullptr);
    const auto isInFront = [this, peer] {
        bool found = false;
        host().onMain([&] {
            const auto front = computer().frontmostApplication.frontmostApplication();
            found = front && front->processIdentifier() == *peer;
        });
        return found;
    };
    if (!activated(eventually(isInFront))) return;
    ask();
    // As a click on the alert does.
    host().onMain([this] { computer().application.activate(); });
    const bool isClientInFront = eventually([&] { return !isInFront(); });
    answer();
    if (activated(isClientInFront)) activated(eventually(isInFront));
}

TEST_F(MacPanels, ALongTextScrollsInItsField) {
    host().onMain([&] {
        const auto window = computer().windows.makeWindow(withAField(), {});
        window->makeKeyAndOrderFront();
        std::size_t fields = 0;
        for (NSWindow* shown in NSApplication.sharedApplication.windows) {
            if (!shown.visible) continue;
            for (NSView* view in shown.contentView.subviews) {
                for (NSView* control in view.subviews) {
                    if (![control isKindOfClass:[NSTextField class]]) continue;
                    NSCell* cell = static_cast<NSTextField*>(control).cell;
                    EXPECT_FALSE(cell.wraps);
                    EXPECT_TRUE(cell.scrollable);
                    ++fields;
                }
            }
        }
        EXPECT_EQ(fields, 1U);
    });
}

TEST_F(MacPanels, ACoverIsWhatItIsAskedToBe) {
    host().onMain([this] {
        const Screen screen = computer().screens.screens().at(0);
        const auto overlay = computer().overlays.makeOverlay({screen.frame, coverLevel, 0x51, {}});
        overlay->orderFrontRegardless();
        std::size_t covers = 0;
        for (NSWindow* window in NSApplication.sharedApplication.windows) {
            if (!window.visible || window.level != coverLevel) continue;
            ++covers;
            EXPECT_EQ(window.collectionBehavior, 0x51U);
            EXPECT_EQ(window.styleMask, NSWindowStyleMaskBorderless);
            EXPECT_FALSE(window.ignoresMouseEvents);
            EXPECT_FALSE(window.hidesOnDeactivate);
            EXPECT_FALSE(window.movable);
            EXPECT_FALSE(window.hasShadow);
            EXPECT_FALSE(window.canHide);
            EXPECT_TRUE(window.opaque);
        }
        EXPECT_EQ(covers, 1U);
    });
}

TEST_F(MacPanels, AWindowHasTheStyleThatItIsAskedToHave) {
    host().onMain([this] {
        WindowDescription description = withAField();
        description.styleMask = windowTitled | windowClosable | windowMiniaturizable;
        const auto window = computer().windows.makeWindow(description, {});
        window->makeKeyAndOrderFront();
        std::size_t windows = 0;
        for (NSWindow* shown in NSApplication.sharedApplication.windows) {
            if (!shown.visible || ![shown.title isEqualToString:@"Vantrel"]) continue;
            ++windows;
            EXPECT_EQ(shown.styleMask & 7, 7U);
        }
        EXPECT_EQ(windows, 1U);
    });
}

TEST_F(MacPanels, AStatusItemMayBeAsLongAsItsTitle) {
    EXPECT_EQ(variableStatusItemLength, NSVariableStatusItemLength);
}

TEST_F(MacPanels, AChosenEntryActsInATurnOfItsOwnUnlessItsMenuIsGone) {
    host().onMain([this] {
        MenuItem entry;
        entry.title = "Termina sessione";
        for (const char* text : {"kept", "gone"}) {
            entry.target = [this, text] { note(text); };
            Menu menu;
            menu.items = {entry};
            @autoreleasepool {
                NSMenu* made = appKitMenu(menu);
                [made performActionForItemAtIndex:0];
                if (kept_ == nil) kept_ = made;
            }
        }
        EXPECT_EQ(notes(), Notes{});
    });
    ASSERT_TRUE(noted(1));
    host().letTimePass(0.1);
    EXPECT_EQ(notes(), Notes{"kept"});
    host().onMain([this] { kept_ = nil; });
}

TEST_F(MacPanels, WhatTakesTheClicksLiesOnTopOfAllOfACover) {
    host().onMain([] {
        BlackoutWindow* cover = [[BlackoutWindow alloc] initWithContentRect:NSMakeRect(0, 0, 400, 300)
                                                                  styleMask:NSWindowStyleMaskBorderless
                                                                    backing:NSBackingStoreBuffered
                                                                      defer:NO];
        cover.releasedWhenClosed = NO;
        OverlayLabel label;
        label.text = "Vantrel";
        label.fontSize = 28;
        label.centreX = 200;
        label.y = 150;
        [cover setUpContentWithSize:NSMakeSize(400, 300) labels:{label}];
        EXPECT_FALSE(cover.canBecomeKeyWindow);
        EXPECT_FALSE(cover.canBecomeMainWindow);
        // In the middle of the label, and beside it.
        for (const NSPoint& place : {NSMakePoint(200, 160), NSMakePoint(5, 5)}) {
            NSView* clicked = [cover.contentView hitTest:place];
            ASSERT_NE(clicked, nil);
            EXPECT_TRUE([clicked isKindOfClass:[BlackoutClickView class]]);
            EXPECT_TRUE([clicked acceptsFirstMouse:emptyEvent()]);
        }
        [cover close];
    });
}

}  // namespace
}  // namespace vantrel::macos
