#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantrel::practice {

/// RFC 4648, with padding.
std::string toBase64(std::string_view bytes);
/// Empty if the text is not base64 with its padding.
std::optional<std::string> fromBase64(std::string_view text);

}  // namespace vantrel::practice
