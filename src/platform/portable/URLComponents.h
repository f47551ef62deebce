#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/network/URLs.h"

namespace vantrel {

/// A URI reference split at its delimiters (RFC 3986, appendix B). The parts are not checked. An absent part differs
/// from an empty one.
struct URLComponents {
    std::optional<std::string> scheme;
    std::optional<std::string> authority;
    std::string path;
    std::optional<std::string> query;
    std::optional<std::string> fragment;

    static URLComponents split(std::string_view text);
    std::string joined() const;
};

/// The scheme in lower case. Empty optional if there is none.
std::optional<std::string> scheme(const URL& url);

/// What the first line of a request for the address names: the text from the authority to the fragment as it stands,
/// with a slash in the place of an empty path.
std::string requestTarget(const URL& url);

/// Resolves a reference, such as a Location header's, against the base (RFC 3986, section 5.2).
std::string resolved(const URL& base, std::string_view reference);

}  // namespace vantrel
