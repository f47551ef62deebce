#include "platform/virtual/network/VirtualURLs.h"

#include <utility>

namespace vantrel::virtualmac {

std::optional<URL> VirtualURLs::form(std::string_view text) const {
    if (fails(forming_, text)) return std::nullopt;
    return urls_.form(text);
}

std::optional<std::string> VirtualURLs::addingPercentEncodingForQuery(std::string_view text) const {
    if (fails(encoding_, text)) return std::nullopt;
    return urls_.addingPercentEncodingForQuery(text);
}

void VirtualURLs::failFormingWhere(Predicate predicate) {
    const std::lock_guard guard(mutex_);
    forming_ = std::move(predicate);
}

void VirtualURLs::failEncodingWhere(Predicate predicate) {
    const std::lock_guard guard(mutex_);
    encoding_ = std::move(predicate);
}

bool VirtualURLs::fails(const Predicate& predicate, std::string_view text) const {
    Predicate copy;
    {
        const std::lock_guard guard(mutex_);
        copy = predicate;
    }
    return copy && copy(text);
}

}  // namespace vantrel::virtualmac
