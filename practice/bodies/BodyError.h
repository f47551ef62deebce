#pragma once

#include <string>

namespace vantrel::practice {

/// Why a body was refused, as text for the reply.
struct BodyError {
    std::string message;
};

}  // namespace vantrel::practice
