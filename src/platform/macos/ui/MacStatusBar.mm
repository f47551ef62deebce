#include "platform/macos/ui/MacStatusBar.h"

#include "platform/macos/threads/MainThread.h"
#include "platform/macos/ui/MacStatusItem.h"

namespace vantrel::macos {

std::unique_ptr<StatusItem> MacStatusBar::statusItem(double length) {
    requireMainThread("statusItem");
    return std::make_unique<MacStatusItem>(length == variableStatusItemLength ? NSVariableStatusItemLength : length);
}

void MacStatusBar::removeStatusItem(StatusItem& item) {
    static_cast<MacStatusItem&>(item).remove();
}

}  // namespace vantrel::macos
