#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantrel::practice {

/// One request as it was received.
struct PracticeRequest {
    /// The largest accepted body, in bytes.
    static constexpr std::size_t largestBody = std::size_t{1024} * 1024;

    std::string method;
    /// The request target as sent: path and query, with percent-encoding.
    std::string path;
    std::vector<std::pair<std::string, std::string>> headers;
    /// The body's bytes, whatever they are.
    std::string body;
    /// The body was larger and has been dropped.
    bool bodyIsTooLarge = false;

    /// The first header of that name, ignoring ASCII case. Empty if there is none.
    std::string header(std::string_view name) const;
};

}  // namespace vantrel::practice
