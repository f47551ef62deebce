#include "platform/macos/ui/MacWindows.h"

#include <utility>

#include "platform/macos/threads/MainThread.h"
#include "platform/macos/ui/MacWindow.h"

namespace vantrel::macos {

std::unique_ptr<Window> MacWindows::makeWindow(const WindowDescription& description, ActionHandler onAction) {
    requireMainThread("makeWindow");
    return std::make_unique<MacWindow>(description, std::move(onAction));
}

}  // namespace vantrel::macos
