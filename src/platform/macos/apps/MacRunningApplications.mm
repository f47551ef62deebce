#include "platform/macos/apps/MacRunningApplications.h"

#include <algorithm>

#include "platform/macos/apps/MacRunningApplication.h"
#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

std::vector<std::shared_ptr<RunningApplication>> MacRunningApplications::withBundleIdentifier(
    std::string_view identifier) const {
    @autoreleasepool {
        std::vector<std::shared_ptr<MacRunningApplication>> found;
        NSString* text = lenientText(identifier);
        for (NSRunningApplication* application in [NSRunningApplication runningApplicationsWithBundleIdentifier:text]) {
            if (auto wrapped = MacRunningApplication::wrap(application)) found.push_back(std::move(wrapped));
        }
        // The system names no order.
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
