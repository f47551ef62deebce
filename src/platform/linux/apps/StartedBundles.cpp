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

void StartedBundles::takeForBrowser(const ProcessEntry& script) {
    const std::lock_guard lock(mutex_);
    const Key key{script.process, script.startTime};
    if (started_.count(key) != 0) browsers_.insert(key);
}

bool StartedBundles::isTakenForBrowser(const ProcessEntry& entry) const {
    const std::lock_guard lock(mutex_);
    return browsers_.count({entry.process, entry.startTime}) != 0;
}

ProcessIdentifier StartedBundles::takenFor(ProcessIdentifier process) const {
    const std::lock_guard lock(mutex_);
    if (browsers_.empty()) return process;
    for (auto above = ProcessTable::origin(process); above; above = ProcessTable::origin(above->parent)) {
        if (browsers_.count({above->process, above->startTime}) != 0) return above->process;
    }
    return process;
}

void StartedBundles::forgetThoseThatAreGone() {
    const auto isGone = [](const Key& key) { return ProcessTable::startTime(key.first) != key.second; };
    std::erase_if(started_, [&isGone](const auto& one) { return isGone(one.first); });
    std::erase_if(browsers_, isGone);
}

}  // namespace vantrel::linuxdesktop
