#include "platform/virtual/world/Activations.h"

#include <utility>

namespace vantrel::virtualmac {

bool Activations::isFree(ProcessIdentifier process) const {
    return answer_ == ActivationAnswer::brings || desktop_.isFrontmost(process) || desktop_.front().empty();
}

Activations::Decision Activations::decide(ProcessIdentifier process) {
    const bool launches = process == client_ && isLaunching_.exchange(false);
    if (launches || isFree(process)) return {};
    switch (answer_.load()) {
        case ActivationAnswer::refuses:
            return {false, std::nullopt};
        case ActivationAnswer::ignores:
            return {true, std::nullopt};
        case ActivationAnswer::comesLate:
            return {true, lateActivation};
        case ActivationAnswer::brings:
            break;
    }
    return {};
}

Activations::Decision Activations::decide(ProcessIdentifier process, ProcessIdentifier inPlaceOf) {
    if (isFree(process)) return {};
    if (!desktop_.isFrontmost(inPlaceOf)) return {false, std::nullopt};
    if (answer_ == ActivationAnswer::refuses) return {};
    return decide(process);
}

bool Activations::mayComeByItself(ProcessIdentifier process, const std::optional<std::string>& bundleIdentifier) const {
    if (answer_ == ActivationAnswer::brings || desktop_.isFrontmost(process) || desktop_.front().empty()) return true;
    return isClientInFront() && bundleIdentifier && *bundleIdentifier == yieldedTo();
}

void Activations::yieldTo(std::string bundleIdentifier) {
    const std::lock_guard guard(mutex_);
    yieldedTo_ = std::move(bundleIdentifier);
}

std::string Activations::yieldedTo() const {
    const std::lock_guard guard(mutex_);
    return yieldedTo_;
}

}  // namespace vantrel::virtualmac
