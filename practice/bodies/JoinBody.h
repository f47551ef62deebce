#pragma once

#include <string>
#include <variant>

#include "practice/bodies/BodyError.h"

namespace vantrel::practice {

/// The body of a join request.
struct JoinBody {
    std::string fullName;
    std::string email;
    std::string platform;
    std::string clientVersion;

    static std::variant<JoinBody, BodyError> read(const std::string& body);
};

}  // namespace vantrel::practice
