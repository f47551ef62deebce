#include "tests/virtual/EventPrinting.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace vantrel::virtualmac {
namespace {

/// "Enumeration::enumerator", taken from the compiler's name of this function: GCC "… [with auto Value =
/// namespace::Enumeration::enumerator; …]", Clang "… [Value = namespace::Enumeration::enumerator]". Other values are
/// written as numbers.
template <auto Value>
constexpr std::string_view nameOf() {
    constexpr std::string_view function = __PRETTY_FUNCTION__;
    constexpr std::string_view before = "Value = ";
    constexpr std::size_t start = function.find(before) + before.size();
    std::string_view name = function.substr(start, function.find_first_of(";]", start) - start);
    constexpr std::string_view space = "vantrel::virtualmac::";
    if (name.starts_with(space)) name.remove_prefix(space.size());
    return name;
}

/// More than any enumeration of events has.
constexpr std::size_t mostEnumerators = 64;

template <class Enumeration, std::size_t... Indices>
constexpr auto namesOf(std::index_sequence<Indices...>) {
    return std::array{nameOf<static_cast<Enumeration>(Indices)>()...};
}

template <class Enumeration>
std::string_view nameOf(Enumeration value) {
    static constexpr auto names = namesOf<Enumeration>(std::make_index_sequence<mostEnumerators>());
    return names.at(static_cast<std::size_t>(value));
}

}  // namespace

void PrintTo(const EventKind& kind, std::ostream* stream) {
    kind.visit([stream](auto value) { *stream << nameOf(value); });
}

void PrintTo(const Happening& happening, std::ostream* stream) {
    PrintTo(happening.kind, stream);
    if (!happening.text.empty()) *stream << " " << happening.text;
    for (const auto& [field, value] : happening.fields) *stream << "; " << nameOf(field) << "=" << value;
}

void PrintTo(const Event& event, std::ostream* stream) {
    *stream << event.time << " ";
    PrintTo(static_cast<const Happening&>(event), stream);
}

}  // namespace vantrel::virtualmac
