#include "platform/linux/apps/StartedBundles.h"

namespace vantrel::linuxdesktop {

void StartedBundles::note(ProcessIdentifier process, const std::string& executable) {
    const auto startTime = ProcessTable::startTime(process);
    if (!startTime || !liesInBundle(executable)) return;
    const std::lock_guard lock(mutex_);
    forgetThoseThatAreGone();
    started_[{process, *startTime}] = executable;
}

std::optional<std::string> StartedBundles::executableOf(const ProcessEntry& entry) const {
    const std::lock_guard lock(mutex_);
    const auto found = started_.find({entry.process, entry.startTime});
    if (found == started_.end()) return std::nullopt;
    return found->second;
}

void StartedBundles::forgetThoseThatAreGone() {
    std::erase_if(started_, [](const auto& one) {
        const auto& [process, startTime] = one.first;
        return ProcessTable::startTime(process) != startTime;
    });
}

}  // namespace vantrel::linuxdesktop
