#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "practice/messages/PracticeReply.h"

namespace vantrel::practice {

/// Compact JSON. Bytes that are not UTF-8 become U+FFFD.
std::string jsonText(const nlohmann::json& value);

PracticeReply jsonReply(int status, const nlohmann::json& value);

/// {"error": error}, and "message" if there is one.
PracticeReply errorReply(int status, const std::string& error, const std::string& message = {});

/// 405 with the only method that the path accepts.
PracticeReply methodNotAllowed(const std::string& allowed);

PracticeReply notFound();

/// 413.
PracticeReply bodyTooLarge();

}  // namespace vantrel::practice
