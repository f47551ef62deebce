#include "platform/virtual/desktop/AccessibilityFaults.h"

#include <algorithm>
#include <utility>

namespace vantrel::virtualmac {

void AccessibilityFaults::fail(Operation operation, std::string name, AccessibilityError error, int times,
                               std::optional<ProcessIdentifier> process) {
    const std::lock_guard guard(mutex_);
    faults_.push_back({operation, std::move(name), error, times, process});
}

void AccessibilityFaults::answer(std::string attribute, AccessibilityValue value, int times,
                                 std::optional<ProcessIdentifier> process) {
    const std::lock_guard guard(mutex_);
    faults_.push_back({Operation::read, std::move(attribute), std::move(value), times, process});
}

void AccessibilityFaults::afterRead(std::string attribute, Block block, std::optional<ProcessIdentifier> process) {
    const std::lock_guard guard(mutex_);
    interruptions_.push_back({std::move(attribute), std::move(block), process});
}

void AccessibilityFaults::clear() {
    const std::lock_guard guard(mutex_);
    faults_.clear();
    interruptions_.clear();
}

std::optional<AccessibilityFaults::Answer> AccessibilityFaults::strike(Operation operation, std::string_view name,
                                                                       ProcessIdentifier process) {
    const std::lock_guard guard(mutex_);
    for (Fault& fault : faults_) {
        if (fault.operation != operation || fault.name != name || fault.times <= 0) continue;
        if (fault.process && *fault.process != process) continue;
        if (fault.times != always) --fault.times;
        return fault.answer;
    }
    return std::nullopt;
}

Block AccessibilityFaults::takeAfterRead(std::string_view attribute, ProcessIdentifier process) {
    const std::lock_guard guard(mutex_);
    const auto found = std::find_if(interruptions_.begin(), interruptions_.end(), [&](const Interruption& each) {
        return each.attribute == attribute && (!each.process || *each.process == process);
    });
    if (found == interruptions_.end()) return nullptr;
    Block block = std::move(found->block);
    interruptions_.erase(found);
    return block;
}

}  // namespace vantrel::virtualmac
