#include "platform/virtual/apps/VirtualRunningApplications.h"

namespace vantrel::virtualmac {

std::vector<std::shared_ptr<RunningApplication>> VirtualRunningApplications::withBundleIdentifier(
    std::string_view identifier) const {
    std::vector<std::shared_ptr<RunningApplication>> found;
    for (const auto& process : processes_.all()) {
        if (process->isAnnounced() && process->description().bundleIdentifier == identifier) found.push_back(process);
    }
    return found;
}

std::shared_ptr<RunningApplication> VirtualRunningApplications::withProcessIdentifier(ProcessIdentifier process) const {
    const auto found = processes_.find(process);
    return found && found->isAnnounced() ? found : nullptr;
}

}  // namespace vantrel::virtualmac
