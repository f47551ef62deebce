#include "browser/BrowserLauncher.h"

namespace vantrel {

std::optional<ProcessIdentifier> BrowserLauncher::browserPID() const {
    return std::nullopt;
}

bool BrowserLauncher::isConfirmedFullscreen() const {
    return false;
}

void BrowserLauncher::launch(const std::string&) {}

void BrowserLauncher::attemptFullscreen() {}

void BrowserLauncher::cancelFullscreenRetry() {}

void BrowserLauncher::bringToFront() {}

void BrowserLauncher::adoptRunningApplication(const std::shared_ptr<RunningApplication>&) {}

void BrowserLauncher::closeBrowser() {}

}  // namespace vantrel
