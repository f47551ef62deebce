#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::practice {

/// A request target split into its parts. Nothing is normalised: "//api" has an empty first segment and differs from
/// "/api".
class RequestTarget {
  public:
    explicit RequestTarget(std::string_view target);

    /// Without the query.
    const std::string& path() const { return path_; }
    /// The parts between the slashes, with percent-encoding. Empty if the path does not begin with one.
    const std::vector<std::string>& segments() const { return segments_; }
    /// A query's value, percent-decoded.
    std::optional<std::string> query(std::string_view name) const;

  private:
    std::string path_;
    std::string query_;
    std::vector<std::string> segments_;
};

}  // namespace vantrel::practice
