#include "platform/virtual/apps/VirtualApplications.h"

namespace vantrel::virtualmac {

std::vector<std::shared_ptr<RunningApplication>> VirtualApplications::withBundleIdentifier(
    std::string_view identifier) const {
    engine_.platformCall();
    std::vector<std::shared_ptr<RunningApplication>> found;
    for (const auto& process : processes_.all()) {
        if (process->isListed() && process->description().bundleIdentifier == identifier) found.push_back(process);
    }
    return found;
}

std::shared_ptr<RunningApplication> VirtualApplications::withProcessIdentifier(ProcessIdentifier process) const {
    engine_.platformCall();
    const auto found = processes_.find(process);
    return found && found->isListed() ? found : nullptr;
}

}  // namespace vantrel::virtualmac
