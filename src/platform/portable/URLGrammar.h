#pragma once

#include <string_view>

namespace vantrel {

/// Whether the text is a non-empty URI-reference by RFC 3986.
bool isURIReference(std::string_view text);

/// Letters, digits and -._~ (section 2.3).
bool isUnreserved(char character);

/// !$&'()*+,;= (section 2.2).
bool isSubDelimiter(char character);

}  // namespace vantrel
