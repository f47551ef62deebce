#include "practice/pages/PageTemplate.h"

#include <algorithm>

namespace vantrel::practice {

std::string filledTemplate(std::string_view text,
                           std::initializer_list<std::pair<std::string_view, std::string_view>> values) {
    constexpr std::string_view opening = "{{";
    constexpr std::string_view closing = "}}";
    std::string filled;
    while (true) {
        const std::size_t start = text.find(opening);
        const std::size_t end = start == std::string_view::npos ? start : text.find(closing, start);
        if (end == std::string_view::npos) return filled.append(text);
        const std::string_view name = text.substr(start + opening.size(), end - start - opening.size());
        const auto* const value =
            std::find_if(values.begin(), values.end(), [&](const auto& entry) { return entry.first == name; });
        const std::size_t after = end + closing.size();
        filled.append(text.substr(0, start));
        filled.append(value == values.end() ? text.substr(start, after - start) : value->second);
        text.remove_prefix(after);
    }
}

}  // namespace vantrel::practice
