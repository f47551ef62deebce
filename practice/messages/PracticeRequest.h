#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantrel::practice {

/// One request as it came in.
struct PracticeRequest {
    std::string method;
    /// The request target as sent: path and query, percent-encoding untouched.
    std::string path;
    std::vector<std::pair<std::string, std::string>> headers;
    /// The body's bytes, whatever they are.
    std::string body;

    /// The first header of that name, compared without regard to ASCII case; empty when there is none.
    std::string header(std::string_view name) const;
};

}  // namespace vantrel::practice
