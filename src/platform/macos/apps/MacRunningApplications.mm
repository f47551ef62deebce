#include "platform/macos/apps/MacRunningApplications.h"

#include <sys/sysctl.h>
#include <sys/types.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/macos/apps/FrontTrace.h"
#include "platform/macos/bridge/Text.h"
#include "platform/macos/desktop/MacAccessibility.h"
#include "platform/macos/threads/MacClock.h"
#include "platform/portable/FrontRequests.h"

namespace vantrel::macos {

std::optional<std::int64_t> KernelProcess::startTime(ProcessIdentifier process) {
    constexpr std::int64_t microsecondsPerSecond = 1'000'000;
    if (process <= 0) return std::nullopt;
    std::array<int, 4> name{CTL_KERN, KERN_PROC, KERN_PROC_PID, process};
    kinfo_proc facts{};
    std::size_t size = sizeof facts;
    if (sysctl(name.data(), name.size(), &facts, &size, nullptr, 0) != 0) return std::nullopt;
    // For a missing process the call succeeds and writes nothing.
    if (size < sizeof facts || facts.kp_proc.p_stat == SZOMB) return std::nullopt;
    const auto& started = facts.kp_proc.p_starttime;
    return started.tv_sec * microsecondsPerSecond + started.tv_usec;
}

static_assert(static_cast<NSUInteger>(ActivationOptions::ignoringOtherApps) == NSApplicationActivateIgnoringOtherApps);

std::shared_ptr<MacRunningApplication> MacRunningApplication::wrap(NSRunningApplication* application) {
    if (application == nil || application.terminated) return nullptr;
    const ProcessIdentifier process = application.processIdentifier;
    const auto startTime = KernelProcess::startTime(process);
    if (!startTime) return nullptr;
    return std::make_shared<MacRunningApplication>(application, process, startTime);
}

std::shared_ptr<MacRunningApplication> MacRunningApplication::wrapEvenEnded(NSRunningApplication* application) {
    if (application == nil) return nullptr;
    if (auto running = wrap(application)) return running;
    return std::make_shared<MacRunningApplication>(application, application.processIdentifier, std::nullopt);
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
    return !startTime_ || application_.terminated || KernelProcess::startTime(process_) != startTime_;
}

// An application that has ended is asked, too. That does no harm, and only the system's answer may be out of date.

namespace {

class MacWaysToFront final : public WaysToFront {
  public:
    MacWaysToFront(NSRunningApplication* application, ActivationOptions options)
        : application_(application), options_(static_cast<NSApplicationActivationOptions>(options)) {}

    bool isInFront() const override { return application_.active; }
    bool activate() override {
        return FrontTrace::answered(application_, "activateWithOptions", [application_ activateWithOptions:options_]);
    }

    bool activateFromFrontmost() override {
        if (@available(macOS 14.0, *)) {
            NSRunningApplication* frontmost = NSWorkspace.sharedWorkspace.frontmostApplication;
            if (frontmost == nil) return false;
            const bool accepted = [application_ activateFromApplication:frontmost options:options_];
            return FrontTrace::answered(application_, "activateFromApplication", accepted);
        }
        return false;
    }

    bool makeFrontmost() override {
        const auto element = MacAccessibility().application(application_.processIdentifier);
        return FrontTrace::answered(application_, "AXFrontmost",
                                    element->setAttribute("AXFrontmost", true) == accessibilitySuccess);
    }

  private:
    NSRunningApplication* const application_;
    const NSApplicationActivationOptions options_;
};

// Never destroyed: other threads may still ask while the process exits.
FrontRequests& frontRequests() {
    static FrontRequests& requests = *new FrontRequests;
    return requests;
}

}  // namespace

// From macOS 14 on, the option has no effect, and an application that is not in front, as the client never is in a
// lockdown, may be declined, or be told yes with no effect.
bool MacRunningApplication::activate(ActivationOptions options) {
    @autoreleasepool {
        MacWaysToFront ways(application_, options);
        if (isTerminated()) {
            ways.activate();
            return false;
        }
        const bool accepted = frontRequests().bring(process_, MacClock().uptime(), ways);
        FrontTrace::lookLater();
        return accepted;
    }
}

bool MacRunningApplication::terminate() {
    const bool isRunning = !isTerminated();
    return [application_ terminate] && isRunning;
}

bool MacRunningApplication::forceTerminate() {
    const bool isRunning = !isTerminated();
    return [application_ forceTerminate] && isRunning;
}

std::vector<std::shared_ptr<RunningApplication>> MacRunningApplications::withBundleIdentifier(
    std::string_view identifier) const {
    @autoreleasepool {
        std::vector<std::shared_ptr<MacRunningApplication>> found;
        NSString* text = lenientText(identifier);
        for (NSRunningApplication* application in [NSRunningApplication runningApplicationsWithBundleIdentifier:text]) {
            if (auto wrapped = MacRunningApplication::wrap(application)) found.push_back(std::move(wrapped));
        }
        // The system promises no order.
        std::stable_sort(found.begin(), found.end(),
                         [](const auto& a, const auto& b) { return a->startTime() < b->startTime(); });
        return {found.begin(), found.end()};
    }
}

std::shared_ptr<RunningApplication> MacRunningApplications::withProcessIdentifier(ProcessIdentifier process) const {
    if (process <= 0) return nullptr;
    @autoreleasepool {
        return MacRunningApplication::wrap([NSRunningApplication runningApplicationWithProcessIdentifier:process]);
    }
}

}  // namespace vantrel::macos
