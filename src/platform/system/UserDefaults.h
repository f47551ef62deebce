#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

/// The standard domain of the user defaults (NSUserDefaults). Any thread. Values are UTF-8.
class UserDefaults {
  public:
    virtual ~UserDefaults() = default;

    /// stringForKey:. Empty if the key is absent or its value is not a string.
    virtual std::optional<std::string> string(std::string_view key) const = 0;

    /// setObject:forKey:. Kept across launches.
    virtual void set(std::string_view key, std::string_view value) = 0;
};

}  // namespace vantrel
