#include "platform/linux/LinuxRunningApplications.h"

#include <unistd.h>

#include "platform/linux/ApplicationNames.h"
#include "platform/linux/LinuxRunningApplication.h"
#include "platform/linux/ProcessTable.h"

namespace vantrel::linuxdesktop {

LinuxRunningApplications::LinuxRunningApplications(X11Windows& windows, const std::string& display)
    : windows_(windows), display_(ProcessTable::displayName(display)) {}

std::vector<std::shared_ptr<RunningApplication>> LinuxRunningApplications::withBundleIdentifier(
    std::string_view identifier) const {
    std::vector<std::shared_ptr<RunningApplication>> found;
    for (const ProcessEntry& entry : ProcessTable::all()) {
        const bool own = entry.process == getpid();
        if (!own && (entry.display.empty() || entry.display != display_)) continue;
        auto application = std::make_shared<LinuxRunningApplication>(entry, windows_);
        if (application->bundleIdentifier() == identifier) found.push_back(std::move(application));
    }
    return found;
}

std::shared_ptr<RunningApplication> LinuxRunningApplications::withProcessIdentifier(ProcessIdentifier process) const {
    const auto entry = ProcessTable::find(process);
    if (!entry) return nullptr;
    return std::make_shared<LinuxRunningApplication>(*entry, windows_);
}

}  // namespace vantrel::linuxdesktop
