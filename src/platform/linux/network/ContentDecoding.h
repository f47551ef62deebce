#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

namespace vantrel::linuxdesktop {

enum class DecodingError { unreadable, tooLarge };

/// What the body of that Content-Encoding was: "gzip", "deflate" or "identity". Unreadable for any other encoding, for
/// a body without its end, and for one with anything after it. Too large if it was more than `most` bytes.
std::variant<std::string, DecodingError> decodedContent(std::string_view encoding, std::string body, std::size_t most);

}  // namespace vantrel::linuxdesktop
