#include "platform/virtual/network/VirtualJSONSerialization.h"

#include <utility>

namespace vantrel::virtualmac {

std::optional<std::string> VirtualJSONSerialization::serialise(const JSONObject& object) const {
    Predicate fails;
    {
        const std::lock_guard guard(mutex_);
        if (failures_ > 0) {
            --failures_;
            return std::nullopt;
        }
        fails = predicate_;
    }
    if (fails && fails(object)) return std::nullopt;
    return json_.serialise(object);
}

void VirtualJSONSerialization::failNext(int count) {
    const std::lock_guard guard(mutex_);
    failures_ = count;
}

void VirtualJSONSerialization::failWhere(Predicate predicate) {
    const std::lock_guard guard(mutex_);
    predicate_ = std::move(predicate);
}

}  // namespace vantrel::virtualmac
