#include "fuzz/FuzzedReply.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>

namespace vantrel::fuzz {

URLReply fuzzedReply(const std::uint8_t* data, std::size_t size) {
    constexpr std::array statuses = {200, 200, 200, 200, 400, 400, 201, 204, 301, 403, 404, 500, 503, 0, -1, 999};
    URLReply reply;
    const std::uint8_t kind = size > 0 ? data[0] : 0;
    std::string body(reinterpret_cast<const char*>(data) + (size > 0 ? 1 : 0), size > 0 ? size - 1 : 0);
    if (kind == 0xFF) {
        reply.error = PlatformError{std::move(body)};
        return reply;
    }
    if (kind != 0xFE) reply.statusCode = statuses[kind % statuses.size()];
    if (!body.empty()) reply.data = std::move(body);
    return reply;
}

void require(bool held, const char* property) {
    if (held) return;
    std::fprintf(stderr, "does not hold: %s\n", property);
    std::abort();
}

namespace {

/// This parser ends the text at a NUL byte, which valid JSON never contains.
nlohmann::json parsed(const std::string& body) {
    if (body.find('\0') != std::string::npos) return nlohmann::json(nlohmann::json::value_t::discarded);
    return nlohmann::json::parse(body, nullptr, false);
}

}  // namespace

Reference::Reference(const URLReply& reply) : body_(reply.data.value_or("")) {
    const auto openings = std::count_if(body_.begin(), body_.end(), [](char c) { return c == '[' || c == '{'; });
    isShallow = openings < 500;
    isObject = isShallow && parsed(body_).is_object();
}

bool Reference::isTrue(const char* key) const {
    const auto value = parsed(body_);
    return isObject && value.contains(key) && value[key].is_boolean() && value[key].get<bool>();
}

bool Reference::isString(const char* key) const {
    const auto value = parsed(body_);
    return isObject && value.contains(key) && value[key].is_string();
}

std::string Reference::string(const char* key) const {
    return isString(key) ? parsed(body_)[key] : "";
}

}  // namespace vantrel::fuzz
