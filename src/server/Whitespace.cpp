#include "server/Whitespace.h"

#include <array>

namespace vantrel {
namespace {

/// The tab and Unicode category Zs, in UTF-8.
constexpr std::array<std::string_view, 18> whitespace = {"\t",     " ",      "\u00A0", "\u1680", "\u2000", "\u2001",
                                                         "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007",
                                                         "\u2008", "\u2009", "\u200A", "\u202F", "\u205F", "\u3000"};

std::size_t leading(std::string_view text) {
    for (const auto space : whitespace) {
        if (text.starts_with(space)) return space.size();
    }
    return 0;
}

std::size_t trailing(std::string_view text) {
    for (const auto space : whitespace) {
        if (text.ends_with(space)) return space.size();
    }
    return 0;
}

}  // namespace

std::string trimmed(std::string_view text) {
    while (const auto size = leading(text)) text.remove_prefix(size);
    while (const auto size = trailing(text)) text.remove_suffix(size);
    return std::string(text);
}

}  // namespace vantrel
