#pragma once

#include <compare>
#include <optional>
#include <string_view>
#include <vector>

namespace vantrel::practice {

/// The numbers of a version such as "2.0-macOS": digits separated by dots, up to the first "-".
class ClientVersion {
  public:
    static std::optional<ClientVersion> parse(std::string_view text);

    /// Missing numbers count as 0: 2 and 2.0 are the same version.
    std::strong_ordering operator<=>(const ClientVersion& other) const;
    bool operator==(const ClientVersion& other) const;

  private:
    std::vector<int> numbers_;
};

}  // namespace vantrel::practice
