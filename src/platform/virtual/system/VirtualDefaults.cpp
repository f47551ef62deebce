#include "platform/virtual/system/VirtualDefaults.h"

#include <utility>

namespace vantrel::virtualmac {

std::optional<std::string> VirtualDefaults::string(std::string_view key) const {
    engine_.platformCall();
    const std::lock_guard guard(mutex_);
    const auto found = values_.find(key);
    if (found == values_.end()) return std::nullopt;
    return found->second;
}

void VirtualDefaults::set(std::string_view key, std::string_view value) {
    engine_.platformCall();
    if (engine_.isOver()) return;
    put(std::string(key), std::string(value));
    engine_.journal.emit("setting-saved", std::string(key), {{"value", std::string(value)}});
}

VirtualDefaults::Values VirtualDefaults::values() const {
    const std::lock_guard guard(mutex_);
    return values_;
}

void VirtualDefaults::put(std::string key, std::string value) {
    const std::lock_guard guard(mutex_);
    values_.insert_or_assign(std::move(key), std::move(value));
}

}  // namespace vantrel::virtualmac
