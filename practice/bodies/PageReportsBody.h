#pragma once

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

#include "practice/bodies/BodyError.h"
#include "practice/bodies/PageReport.h"

namespace vantrel::practice {

/// The body with which a meeting page reports.
struct PageReportsBody {
    // In bytes. A browser lets a request outlive its page only up to the first of these.
    static constexpr std::size_t largestBody = std::size_t{64} * 1024;
    static constexpr std::size_t longestText = 4000;
    static constexpr std::size_t longestName = 64;

    /// What the page calls itself: 1 to 64 letters, digits and `-`.
    std::string page;
    /// Numbers ascend.
    std::vector<PageReport> reports;

    static std::variant<PageReportsBody, BodyError> read(const std::string& body);
};

}  // namespace vantrel::practice
