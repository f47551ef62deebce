#import <AppKit/AppKit.h>

#include <cstdint>
#include <utility>
#include <vector>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/appkit/MenuDescription.h"
#include "tests/macos/standins/appkit/SendAction.h"
#include "tests/macos/standins/foundation/Text.h"

using namespace vantrel::standins;

@interface NSMenuItem (VantrelDescription)
- (vantrel::MenuItem)vantrel_description;
- (bool)vantrel_isEnabled;
- (void)vantrel_choose;
@end

@implementation NSMenuItem {
    NSString* _title;
    NSString* _key;
    bool _isSeparator;
}

+ (NSMenuItem*)separatorItem {
    NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:@"" action:nil keyEquivalent:@""];
    item->_isSeparator = true;
    return item;
}

- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key {
    if (title == nil || key == nil) raise(@"NSInternalInconsistencyException", @"a menu item without a title or key");
    self = [super init];
    if (self == nil) return nil;
    _title = [title copy];
    _key = [key copy];
    self.action = action;
    return self;
}

// Apple does not say that item and target are kept while the action runs. So they are not.
- (void)vantrel_choose {
    __unsafe_unretained id target = nil;
    @autoreleasepool {
        target = self.target;
    }
    sendAction(self.action, target, self);
}

- (NSString*)title {
    return _title;
}

- (void)setTitle:(NSString*)title {
    _title = [title copy];
}

- (BOOL)isEnabled {
    return [self vantrel_isEnabled];
}

// Without effect: its menu enables its items by itself.
- (void)setEnabled:(BOOL)enabled {
    (void)enabled;
}

- (bool)vantrel_isEnabled {
    if (self.submenu != nil) return true;
    if (_isSeparator || self.action == nullptr) return false;
    id target = self.target;
    return target == nil || [target respondsToSelector:self.action];
}

- (vantrel::MenuItem)vantrel_description {
    if (_isSeparator) return vantrel::MenuItem::separator();
    vantrel::MenuItem item;
    item.title = bytesOf(_title);
    item.keyEquivalent = bytesOf(_key);
    item.enabled = [self vantrel_isEnabled];
    if (self.submenu != nil) {
        item.kind = vantrel::MenuItem::Kind::submenu;
        item.submenu = descriptionOf(self.submenu);
    } else if (self.target != nil) {
        __weak NSMenuItem* weak = self;
        item.target = [weak] {
            withPool([weak] {
                __unsafe_unretained NSMenuItem* chosen = nil;
                @autoreleasepool {
                    chosen = weak;
                }
                [chosen vantrel_choose];
            })();
        };
    } else if (self.action != nullptr) {
        item.action = sel_getName(self.action);
    }
    return item;
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    raise(@"NSInvalidArgumentException", @"copying a menu item is not stood in for");
}

@end

@implementation NSMenu {
    NSString* _title;
    std::vector<NSMenuItem*> _items;
    std::uint64_t _statusItem;
}

- (instancetype)initWithTitle:(NSString*)title {
    if (title == nil) raise(@"NSInternalInconsistencyException", @"a menu without a title");
    self = [super init];
    if (self != nil) _title = [title copy];
    return self;
}

- (void)addItem:(NSMenuItem*)item {
    if (item == nil) raise(@"NSInvalidArgumentException", @"addItem: nil");
    _items.push_back(item);
}

- (NSArray<NSMenuItem*>*)itemArray {
    NSMutableArray* items = [NSMutableArray arrayWithCapacity:_items.size()];
    for (NSMenuItem* item : _items) [items addObject:item];
    return items;
}

- (void)setItemArray:(NSArray<NSMenuItem*>*)items {
    _items.clear();
    for (NSMenuItem* item in items) [self addItem:item];
}

- (NSInteger)indexOfItemWithTitle:(NSString*)title {
    for (std::size_t index = 0; index < _items.size(); ++index) {
        if ([_items[index] vantrel_description].title == bytesOf(title)) return static_cast<NSInteger>(index);
    }
    return -1;
}

// Items are asked when they are described.
- (void)update {
}

- (void)performActionForItemAtIndex:(NSInteger)index {
    NSMenuItem* item = _items.at(static_cast<std::size_t>(index));
    if ([item vantrel_isEnabled]) [item vantrel_choose];
}

- (void)cancelTracking {
    requireMain("-[NSMenu cancelTracking]");
    if (_statusItem != 0) mac().menus().cancel(_statusItem);
}

- (void)vantrel_setStatusItem:(std::uint64_t)number {
    _statusItem = number;
}

- (vantrel::Menu)vantrel_description {
    vantrel::Menu menu{bytesOf(_title), {}};
    for (NSMenuItem* item : _items) menu.items.push_back([item vantrel_description]);
    return menu;
}

- (id)copyWithZone:(struct _NSZone*)zone {
    (void)zone;
    raise(@"NSInvalidArgumentException", @"copying a menu is not stood in for");
}

@end

@interface NSMenu (VantrelDescription)
- (vantrel::Menu)vantrel_description;
@end

namespace vantrel::standins {

Menu descriptionOf(NSMenu* menu) {
    if (menu == nil) return {};
    return [menu vantrel_description];
}

}  // namespace vantrel::standins
