#include "lockdown/WindowMonitorService.h"

namespace vantrel {

void WindowMonitorService::startMonitoring(const std::shared_ptr<BrowserLauncher>&) {}

void WindowMonitorService::stopMonitoring() {}

void WindowMonitorService::setFullscreenConfirmed(bool confirmed) {
    fullscreenConfirmed_ = confirmed;
}

}  // namespace vantrel
