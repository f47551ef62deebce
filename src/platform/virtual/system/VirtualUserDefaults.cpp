#include "platform/virtual/system/VirtualUserDefaults.h"

#include <utility>

namespace vantrel::virtualmac {

std::optional<std::string> VirtualUserDefaults::string(std::string_view key) const {
    const std::lock_guard guard(mutex_);
    const auto found = values_.find(key);
    if (found == values_.end()) return std::nullopt;
    return found->second;
}

void VirtualUserDefaults::set(std::string_view key, std::string_view value) {
    if (engine_.isOver()) return;
    put(std::string(key), std::string(value));
    engine_.journal.emit({ClientEvent::settingSaved, std::string(key), {{Field::value, std::string(value)}}});
}

VirtualUserDefaults::Values VirtualUserDefaults::values() const {
    const std::lock_guard guard(mutex_);
    return values_;
}

void VirtualUserDefaults::put(std::string key, std::string value) {
    const std::lock_guard guard(mutex_);
    values_.insert_or_assign(std::move(key), std::move(value));
}

}  // namespace vantrel::virtualmac
