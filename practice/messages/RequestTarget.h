#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::practice {

/// A request target taken apart. Nothing is normalised: "//api" has an empty first segment, and another path than
/// "/api".
class RequestTarget {
  public:
    explicit RequestTarget(std::string_view target);

    /// Without the query.
    const std::string& path() const { return path_; }
    /// What stands between the slashes, percent-encoding untouched; empty when the path does not begin with one.
    const std::vector<std::string>& segments() const { return segments_; }
    /// A query's value with its percent-encoding undone.
    std::optional<std::string> query(std::string_view name) const;

  private:
    std::string path_;
    std::string query_;
    std::vector<std::string> segments_;
};

}  // namespace vantrel::practice
