#pragma once

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

#include "practice/bodies/BodyError.h"
#include "practice/bodies/PageReport.h"

namespace vantrel::practice {

/// The body of a meeting page's report.
struct PageReportsBody {
    // In bytes. A browser lets requests outlive their page only up to this size.
    static constexpr std::size_t largestBody = std::size_t{64} * 1024;
    static constexpr std::size_t longestText = 4000;
    static constexpr std::size_t longestName = 64;

    /// The page's own name: 1 to 64 letters, digits and `-`.
    std::string page;
    /// In ascending order of their numbers.
    std::vector<PageReport> reports;

    static std::variant<PageReportsBody, BodyError> read(const std::string& body);
};

}  // namespace vantrel::practice
