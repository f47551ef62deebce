#pragma once

#include <string>

namespace vantrel::practice {

/// Why a body was refused, for whoever reads the reply.
struct BodyError {
    std::string message;
};

}  // namespace vantrel::practice
