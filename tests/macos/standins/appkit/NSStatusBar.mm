#import <AppKit/AppKit.h>

#include <cstdint>
#include <memory>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/appkit/MenuDescription.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Classes.h"
#include "tests/macos/standins/runtime/Singletons.h"

using namespace vantrel::standins;

@interface NSStatusItem (VantrelMaking)
- (instancetype)initWithLength:(CGFloat)length;
- (void)vantrel_remove;
- (void)vantrel_setTitle:(NSString*)title;
@end

@implementation NSStatusBarButton {
    __weak NSStatusItem* _item;
}

- (instancetype)initWithItem:(NSStatusItem*)item {
    self = [super initWithFrame:NSMakeRect(0, 0, 0, 0)];
    if (self != nil) _item = item;
    return self;
}

- (void)setTitle:(NSString*)title {
    super.title = title;
    [_item vantrel_setTitle:title];
}

@end

@interface NSStatusBarButton (VantrelMaking)
- (instancetype)initWithItem:(NSStatusItem*)item;
@end

@implementation NSStatusItem {
    std::unique_ptr<vantrel::StatusItem> _item;
    NSStatusBarButton* _button;
    NSMenu* _menu;
    /// The virtual Mac's.
    std::uint64_t _number;
}

- (instancetype)initWithLength:(CGFloat)length {
    self = [super init];
    if (self == nil) return nil;
    (void)length;
    _item = mac().statusBar().systemItem();
    _number = mac().statusBar().items().back().number;
    _button = [[NSStatusBarButton alloc] initWithItem:self];
    return self;
}

- (NSStatusBarButton*)button {
    return _button;
}

- (NSMenu*)menu {
    return _menu;
}

- (void)setMenu:(NSMenu*)menu {
    requireMain("-[NSStatusItem setMenu:]");
    [_menu vantrel_setStatusItem:0];
    _menu = menu;
    [_menu vantrel_setStatusItem:_number];
    if (_item) _item->setMenu(descriptionOf(menu));
}

- (void)vantrel_setTitle:(NSString*)title {
    requireMain("the title of a status item");
    if (_item) _item->setButtonTitle(bytesOf(title));
}

// No page says what becomes of a menu that is open.
- (void)vantrel_remove {
    if (!_item) return;
    if (mac().menus().isOpenAt(_number)) fatal("a status item is removed under its open menu");
    mac().parts().statusBar.removeStatusItem(*_item);
    _item.reset();
}

@end

@implementation NSStatusBar

+ (NSStatusBar*)systemStatusBar {
    static NSStatusBar* const bar = singleton([[NSStatusBar alloc] init]);
    return bar;
}

// The caller owns the item. Without a reference it leaves the bar.
- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    requireMain("statusItemWithLength:");
    return [[NSStatusItem alloc] initWithLength:length];
}

- (void)removeStatusItem:(NSStatusItem*)item {
    requireMain("removeStatusItem:");
    [item vantrel_remove];
}

@end
