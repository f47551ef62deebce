#include "platform/macos/apps/MacRunningApplication.h"

#include "platform/macos/apps/KernelProcess.h"
#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

static_assert(static_cast<NSUInteger>(ActivationOptions::ignoringOtherApps) == NSApplicationActivateIgnoringOtherApps);

std::shared_ptr<MacRunningApplication> MacRunningApplication::wrap(NSRunningApplication* application) {
    if (application == nil || application.terminated) return nullptr;
    const ProcessIdentifier process = application.processIdentifier;
    const auto startTime = KernelProcess::startTime(process);
    if (!startTime) return nullptr;
    return std::make_shared<MacRunningApplication>(application, process, *startTime);
}

std::optional<std::string> MacRunningApplication::bundleIdentifier() const {
    @autoreleasepool {
        return bytesOfAny(application_.bundleIdentifier);
    }
}

std::optional<std::string> MacRunningApplication::localizedName() const {
    @autoreleasepool {
        return bytesOfAny(application_.localizedName);
    }
}

bool MacRunningApplication::isTerminated() const {
    return application_.terminated || KernelProcess::startTime(process_) != startTime_;
}

// From macOS 14 on the option has no effect and the system may decline; the call is the same.
bool MacRunningApplication::activate(ActivationOptions options) {
    if (isTerminated()) return false;
    return [application_ activateWithOptions:static_cast<NSApplicationActivationOptions>(options)];
}

bool MacRunningApplication::terminate() {
    return !isTerminated() && [application_ terminate];
}

bool MacRunningApplication::forceTerminate() {
    return !isTerminated() && [application_ forceTerminate];
}

}  // namespace vantrel::macos
