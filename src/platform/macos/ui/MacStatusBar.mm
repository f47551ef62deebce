#include "platform/macos/ui/MacStatusBar.h"

#include "platform/macos/bridge/Text.h"
#include "platform/macos/threads/MainThread.h"
#include "platform/macos/ui/MenuBuilder.h"

namespace vantrel::macos {

MacStatusItem::MacStatusItem(double length) : item_([NSStatusBar.systemStatusBar statusItemWithLength:length]) {}

MacStatusItem::~MacStatusItem() {
    remove();
}

void MacStatusItem::setButtonTitle(const std::string& title) {
    requireMainThread("setButtonTitle");
    item_.button.title = lenientText(title);
}

void MacStatusItem::setMenu(const Menu& menu) {
    requireMainThread("setMenu");
    item_.menu = appKitMenu(menu);
}

void MacStatusItem::remove() {
    requireMainThread("remove");
    if (item_ == nil) return;
    // Otherwise an open menu would stay on the screen with items that do nothing.
    [item_.menu cancelTracking];
    [NSStatusBar.systemStatusBar removeStatusItem:item_];
    item_ = nil;
}

std::unique_ptr<StatusItem> MacStatusBar::statusItem(double length) {
    requireMainThread("statusItem");
    return std::make_unique<MacStatusItem>(length == variableStatusItemLength ? NSVariableStatusItemLength : length);
}

void MacStatusBar::removeStatusItem(StatusItem& item) {
    static_cast<MacStatusItem&>(item).remove();
}

}  // namespace vantrel::macos
