#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

/// A valid URL. Only URLs::form creates it.
struct URL {
    std::string absoluteString;
    bool operator==(const URL&) const = default;
};

/// Forms URLs (NSURL). Any thread.
class URLs {
  public:
    virtual ~URLs() = default;

    /// URLWithString: in its strict sense: it percent-encodes nothing. Empty if the text is not a URL already (a space,
    /// a control character, a bare non-ASCII letter, an empty text). A text without a scheme is accepted.
    virtual std::optional<URL> form(std::string_view text) const = 0;

    /// stringByAddingPercentEncodingWithAllowedCharacters: with the query-allowed set. Empty if the text is not valid
    /// UTF-8.
    virtual std::optional<std::string> addingPercentEncodingForQuery(std::string_view text) const = 0;
};

}  // namespace vantrel
