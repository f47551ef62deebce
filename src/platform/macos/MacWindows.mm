#include "platform/macos/MacWindows.h"

#include <utility>

#include "platform/macos/MacWindow.h"
#include "platform/macos/MainThread.h"

namespace vantrel::macos {

std::unique_ptr<Window> MacWindows::makeWindow(const WindowDescription& description, ActionHandler onAction) {
    requireMainThread("makeWindow");
    return std::make_unique<MacWindow>(description, std::move(onAction));
}

}  // namespace vantrel::macos
