#include "practice/messages/JsonReply.h"

#include <nlohmann/json.hpp>

#include "practice/messages/PracticeRequest.h"

namespace vantrel::practice {

std::string jsonText(const nlohmann::json& value) {
    return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

PracticeReply jsonReply(int status, const nlohmann::json& value) {
    PracticeReply reply;
    reply.status = status;
    reply.body = jsonText(value);
    return reply;
}

PracticeReply errorReply(int status, const std::string& error, const std::string& message) {
    nlohmann::json value{{"error", error}};
    if (!message.empty()) value["message"] = message;
    return jsonReply(status, value);
}

PracticeReply methodNotAllowed(const std::string& allowed) {
    PracticeReply reply = errorReply(405, "method_not_allowed");
    reply.headers.emplace_back("Allow", allowed);
    return reply;
}

PracticeReply notFound() {
    return errorReply(404, "not_found");
}

PracticeReply bodyTooLarge() {
    return errorReply(413, "body_too_large",
                      "the body is longer than " + std::to_string(PracticeRequest::largestBody) + " bytes");
}

}  // namespace vantrel::practice
