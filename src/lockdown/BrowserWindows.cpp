#include "lockdown/BrowserWindows.h"

#include <algorithm>

namespace vantrel {
namespace {

constexpr double largePart = 0.6;
constexpr Size smallest{200, 100};

bool isLargerThan(const WindowEntry& window, ProcessIdentifier process, const Size& size) {
    return window.ownerPID == process && window.layer == 0 && window.bounds && window.bounds->size.width > size.width &&
           window.bounds->size.height > size.height;
}

Size large(const Size& screen) {
    return {largePart * screen.width, largePart * screen.height};
}

}  // namespace

bool hasLargeWindow(const std::vector<WindowEntry>& windows, ProcessIdentifier process, const Size& screen) {
    return std::any_of(windows.begin(), windows.end(), [process, size = large(screen)](const WindowEntry& window) {
        return isLargerThan(window, process, size);
    });
}

bool hasLargeWindowOnScreen(const std::vector<WindowEntry>& windows, ProcessIdentifier process, const Size& screen) {
    return std::any_of(windows.begin(), windows.end(), [process, size = large(screen)](const WindowEntry& window) {
        return window.isOnscreen.value_or(false) && isLargerThan(window, process, size);
    });
}

bool hasWindowAtAll(const std::vector<WindowEntry>& windows, ProcessIdentifier process) {
    return std::any_of(windows.begin(), windows.end(),
                       [process](const WindowEntry& window) { return isLargerThan(window, process, smallest); });
}

}  // namespace vantrel
