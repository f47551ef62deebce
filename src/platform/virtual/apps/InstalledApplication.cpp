#include "platform/virtual/apps/InstalledApplication.h"

#include <utility>

namespace vantrel::virtualmac {

namespace {

InstalledApplication browser(std::string name, std::string bundleIdentifier, double windowAfter) {
    InstalledApplication made;
    made.application.name = std::move(name);
    made.application.bundleIdentifier = std::move(bundleIdentifier);
    made.application.exitDelay = 0.3;
    made.appearsAfter = 0.2;
    made.handsOverIn = 0.4;
    NewWindow window;
    window.after = windowAfter;
    made.windows.push_back(window);
    return made;
}

}  // namespace

InstalledApplication chrome() {
    return browser("Google Chrome", "com.google.Chrome", 0.9);
}

InstalledApplication edge() {
    return browser("Microsoft Edge", "com.microsoft.edgemac", 1.1);
}

InstalledApplication firefox() {
    return browser("Firefox", "org.mozilla.firefox", 1.2);
}

InstalledApplication safari() {
    return browser("Safari", "com.apple.Safari", 0.6);
}

}  // namespace vantrel::virtualmac
