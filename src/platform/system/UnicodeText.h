#pragma once

#include <string>
#include <string_view>

namespace vantrel {

/// NSString's Unicode operations. Any thread; texts are UTF-8.
class UnicodeText {
  public:
    virtual ~UnicodeText() = default;

    /// uppercaseString: Unicode's full mapping, independent of language (ß becomes SS). Bytes that are not UTF-8 become
    /// U+FFFD.
    virtual std::string uppercased(std::string_view text) const = 0;

    /// Whether the bytes are valid UTF-8 (initWithData:encoding: gives a string).
    virtual bool isValidUTF8(std::string_view bytes) const = 0;
};

}  // namespace vantrel
