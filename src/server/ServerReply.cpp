#include "server/ServerReply.h"

namespace vantrel {

std::optional<std::string> stringValue(const JSONObject& object, std::string_view key) {
    const auto found = object.find(key);
    if (found == object.end()) return std::nullopt;
    const auto* text = found->second.string();
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

std::optional<bool> booleanValue(const JSONObject& object, std::string_view key) {
    const auto found = object.find(key);
    if (found == object.end()) return std::nullopt;
    const auto* boolean = found->second.boolean();
    return boolean != nullptr ? std::optional(*boolean) : std::nullopt;
}

}  // namespace vantrel
