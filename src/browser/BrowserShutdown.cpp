#include "browser/BrowserShutdown.h"

#include "browser/AccessibilityWindows.h"

namespace vantrel {
namespace {

constexpr double pauseAfterLeavingFullscreen = 0.5;
constexpr double terminationTimeout = 2.0;
constexpr double exitPollingInterval = 0.2;

}  // namespace

void BrowserShutdown::closeWindows(ProcessIdentifier process) const {
    for (const auto& window : accessibilityWindows(accessibility_, process)) {
        if (isFullscreen(*window).value_or(false)) {
            setFullscreen(*window, false);
            threads_.sleep(pauseAfterLeavingFullscreen);
        }
        pressCloseButton(*window);
    }
}

void BrowserShutdown::terminate(const std::shared_ptr<RunningApplication>& application) const {
    if (application) application->terminate();
    const double deadline = clock_.uptime() + terminationTimeout;
    while (clock_.uptime() < deadline && (!application || !application->isTerminated())) {
        threads_.sleep(exitPollingInterval);
    }
    if (application && !application->isTerminated()) application->forceTerminate();
}

}  // namespace vantrel
