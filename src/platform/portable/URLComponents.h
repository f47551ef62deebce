#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/network/URLs.h"

namespace vantrel {

/// A URI reference taken apart at its delimiters (RFC 3986, appendix B), without a look at what stands between them. An
/// absent part and an empty one are different things.
struct URLComponents {
    std::optional<std::string> scheme;
    std::optional<std::string> authority;
    std::string path;
    std::optional<std::string> query;
    std::optional<std::string> fragment;

    static URLComponents split(std::string_view text);
    std::string joined() const;
};

/// The scheme in lower case; empty optional when there is none.
std::optional<std::string> scheme(const URL& url);

/// The reference as seen from the base (RFC 3986, section 5.2), such as a Location header's.
std::string resolved(const URL& base, std::string_view reference);

}  // namespace vantrel
