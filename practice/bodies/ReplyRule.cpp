#include "practice/bodies/ReplyRule.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string_view>

#include "practice/bodies/JsonBody.h"
#include "practice/messages/Base64.h"
#include "practice/messages/RequestTarget.h"

namespace vantrel::practice {

namespace {

using nlohmann::json;

std::string repeated(const std::string& pattern, std::size_t size) {
    std::string body;
    body.reserve(size);
    while (body.size() < size) body.append(pattern, 0, size - body.size());
    return body;
}

/// Stores one member in the rule. Returns what is wrong with it, or an empty text.
std::string readMember(ReplyRule& rule, const std::string& name, const json& value) {
    const auto text = [&](auto& place) -> std::string {
        if (!value.is_string()) return "\"" + name + "\" is not a string";
        place = value.get<std::string>();
        return {};
    };
    const auto flag = [&](bool& place) -> std::string {
        if (!value.is_boolean()) return "\"" + name + "\" is not a boolean";
        place = value.get<bool>();
        return {};
    };

    if (name == "method") return text(rule.method);
    if (name == "path") return text(rule.path);
    if (name == "contentType") return text(rule.contentType);
    if (name == "body") return text(rule.body);
    if (name == "location") return text(rule.location);
    if (name == "dropConnection") return flag(rule.dropConnection);
    if (name == "stallAfterHeaders") return flag(rule.stallAfterHeaders);
    if (name == "bodyBase64") {
        const auto bytes = value.is_string() ? fromBase64(value.get<std::string>()) : std::nullopt;
        if (!bytes) return "\"bodyBase64\" is not a string of base64 with its padding";
        rule.body = *bytes;
        return {};
    }
    if (name == "times") {
        if (!value.is_number_unsigned() || value == 0) return "\"times\" is not a whole number of at least 1";
        rule.times = value.get<std::uint64_t>();
        return {};
    }
    if (name == "status") {
        if (!value.is_number_unsigned() || value < 200 || value > 599) return "\"status\" is not between 200 and 599";
        rule.status = value.get<int>();
        return {};
    }
    if (name == "bodySize") {
        if (!value.is_number_unsigned() || value > ReplyRule::largestBody) {
            return "\"bodySize\" is not between 0 and " + std::to_string(ReplyRule::largestBody);
        }
        rule.bodySize = value.get<std::size_t>();
        return {};
    }
    if (name == "delaySeconds") {
        if (!value.is_number() || value < 0 || value > ReplyRule::longestDelay) {
            return "\"delaySeconds\" is not between 0 and " + std::to_string(static_cast<int>(ReplyRule::longestDelay));
        }
        rule.delaySeconds = value.get<double>();
        return {};
    }
    return "unknown key \"" + name + "\"";
}

}  // namespace

std::variant<ReplyRule, BodyError> ReplyRule::read(const std::string& text) {
    const auto parsed = jsonBody(text);
    if (const auto* error = std::get_if<BodyError>(&parsed)) return *error;
    const json& value = std::get<json>(parsed);
    if (!value.is_object()) return BodyError{"the body is not a JSON object"};
    if (value.contains("body") && value.contains("bodyBase64")) return BodyError{"both \"body\" and \"bodyBase64\""};

    ReplyRule rule;
    for (const auto& [name, member] : value.items()) {
        const std::string wrong = readMember(rule, name, member);
        if (!wrong.empty()) return BodyError{wrong};
    }
    if (rule.path.empty()) return BodyError{"\"path\" is missing"};
    return rule;
}

bool ReplyRule::matches(const PracticeRequest& request) const {
    if (method != "*" && method != request.method) return false;
    if (!path.empty() && path.back() == '*') {
        return std::string_view(request.path).substr(0, path.size() - 1) ==
               std::string_view(path).substr(0, path.size() - 1);
    }
    return path == request.path || path == RequestTarget(request.path).path();
}

void ReplyRule::applyTo(PracticeReply& reply) const {
    if (location) {
        reply.status = 302;
        reply.headers.emplace_back("Location", *location);
    }
    if (status) reply.status = *status;
    if (contentType) reply.contentType = *contentType;
    if (body) reply.body = *body;
    if (bodySize)
        reply.body = repeated(body && !body->empty() ? *body : "0123456789abcdef", std::min(*bodySize, largestBody));
    reply.delaySeconds = delaySeconds;
    reply.dropConnection = dropConnection;
    reply.stallAfterHeaders = stallAfterHeaders;
}

}  // namespace vantrel::practice
