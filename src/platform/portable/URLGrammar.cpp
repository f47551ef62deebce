#include "platform/portable/URLGrammar.h"

#include <algorithm>
#include <cstddef>

#include "platform/portable/URLComponents.h"

namespace vantrel {

namespace {

// Not the C library's functions: they depend on a locale.
bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// Allows unreserved characters, sub-delimiters, percent-encoded triplets and the characters in `extra`.
bool consistsOf(std::string_view text, std::string_view extra) {
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char c = text[index];
        if (c == '%') {
            if (index + 2 >= text.size() || !isHexDigit(text[index + 1]) || !isHexDigit(text[index + 2])) return false;
            index += 2;
        } else if (!isUnreserved(c) && !isSubDelimiter(c) && extra.find(c) == std::string_view::npos) {
            return false;
        }
    }
    return true;
}

bool isScheme(std::string_view text) {
    return !text.empty() && isLetter(text.front()) && std::all_of(text.begin(), text.end(), [](char c) {
        return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.';
    });
}

bool isIPv4Address(std::string_view text) {
    int octets = 0;
    for (;;) {
        const auto dot = std::min(text.find('.'), text.size());
        const std::string_view octet = text.substr(0, dot);
        if (octet.empty() || octet.size() > 3 || !std::all_of(octet.begin(), octet.end(), isDigit)) return false;
        if (octet.size() > 1 && octet.front() == '0') return false;
        if (octet.size() == 3 && octet > "255") return false;
        ++octets;
        if (dot == text.size()) return octets == 4;
        text.remove_prefix(dot + 1);
    }
}

/// Counts the 16-bit groups of "a:b:c". Negative if it is not a list of groups. Only the last one may be an IPv4
/// address.
int groupCount(std::string_view text, bool isLastPart) {
    if (text.empty()) return 0;
    int groups = 0;
    for (;;) {
        const auto colon = std::min(text.find(':'), text.size());
        const std::string_view group = text.substr(0, colon);
        const bool isLast = colon == text.size();
        if (isLast && isLastPart && group.find('.') != std::string_view::npos) {
            return isIPv4Address(group) ? groups + 2 : -1;
        }
        if (group.empty() || group.size() > 4 || !std::all_of(group.begin(), group.end(), isHexDigit)) return -1;
        ++groups;
        if (isLast) return groups;
        text.remove_prefix(colon + 1);
    }
}

bool isIPv6Address(std::string_view text) {
    const auto gap = text.find("::");
    if (gap == std::string_view::npos) return groupCount(text, true) == 8;
    const int before = groupCount(text.substr(0, gap), false);
    const int after = groupCount(text.substr(gap + 2), true);
    return before >= 0 && after >= 0 && before + after <= 7;
}

bool isIPvFuture(std::string_view text) {
    const auto dot = text.find('.');
    if (dot == std::string_view::npos || dot < 2 || dot + 1 == text.size()) return false;
    if (text.front() != 'v' && text.front() != 'V') return false;
    const std::string_view version = text.substr(1, dot - 1);
    const std::string_view address = text.substr(dot + 1);
    return std::all_of(version.begin(), version.end(), isHexDigit) &&
           std::all_of(address.begin(), address.end(),
                       [](char c) { return isUnreserved(c) || isSubDelimiter(c) || c == ':'; });
}

bool isPort(std::string_view text) {
    return std::all_of(text.begin(), text.end(), isDigit);
}

bool isAuthority(std::string_view text) {
    if (const auto at = text.find('@'); at != std::string_view::npos) {
        if (!consistsOf(text.substr(0, at), ":")) return false;
        text.remove_prefix(at + 1);
    }
    if (text.starts_with('[')) {
        const auto end = text.find(']');
        if (end == std::string_view::npos) return false;
        const std::string_view literal = text.substr(1, end - 1);
        if (!isIPv6Address(literal) && !isIPvFuture(literal)) return false;
        text.remove_prefix(end + 1);
        return text.empty() || (text.front() == ':' && isPort(text.substr(1)));
    }
    const auto colon = std::min(text.find(':'), text.size());
    return consistsOf(text.substr(0, colon), "") && (colon == text.size() || isPort(text.substr(colon + 1)));
}

}  // namespace

bool isUnreserved(char c) {
    return isLetter(c) || isDigit(c) || c == '-' || c == '.' || c == '_' || c == '~';
}

bool isSubDelimiter(char c) {
    return std::string_view("!$&'()*+,;=").find(c) != std::string_view::npos;
}

bool isURIReference(std::string_view text) {
    if (text.empty()) return false;
    const URLComponents parts = URLComponents::split(text);
    return (!parts.scheme || isScheme(*parts.scheme)) && (!parts.authority || isAuthority(*parts.authority)) &&
           consistsOf(parts.path, ":@/") && (!parts.query || consistsOf(*parts.query, ":@/?")) &&
           (!parts.fragment || consistsOf(*parts.fragment, ":@/?"));
}

}  // namespace vantrel
