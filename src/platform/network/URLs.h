#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

/// A formed URL; made by URLs::form only.
struct URL {
    std::string absoluteString;
    bool operator==(const URL&) const = default;
};

/// Forming of URLs (NSURL). Any thread.
class URLs {
  public:
    virtual ~URLs() = default;

    /// URLWithString: in its strict sense: nothing is percent-encoded on the way. Empty when the text is not a URL as
    /// it stands (a space, a control character, a bare non-ASCII letter, an empty text). A text without a scheme does
    /// form one.
    virtual std::optional<URL> form(std::string_view text) const = 0;

    /// stringByAddingPercentEncodingWithAllowedCharacters: with the query-allowed set. Empty when the text is not valid
    /// UTF-8.
    virtual std::optional<std::string> addingPercentEncodingForQuery(std::string_view text) const = 0;
};

}  // namespace vantrel
