#include "platform/virtual/keyboard/KeyStroke.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace vantrel::virtualmac {

namespace {

struct Name {
    std::string_view name;
    std::int64_t code;
};

constexpr std::array keys = {
    Name{"a", 0},
    Name{"s", 1},
    Name{"d", 2},
    Name{"f", 3},
    Name{"h", 4},
    Name{"g", 5},
    Name{"z", 6},
    Name{"x", 7},
    Name{"c", 8},
    Name{"v", 9},
    Name{"section", 10},
    Name{"b", 11},
    Name{"q", 12},
    Name{"w", 13},
    Name{"e", 14},
    Name{"r", 15},
    Name{"y", 16},
    Name{"t", 17},
    Name{"1", 18},
    Name{"2", 19},
    Name{"3", 20},
    Name{"4", 21},
    Name{"6", 22},
    Name{"5", 23},
    Name{"equal", 24},
    Name{"9", 25},
    Name{"7", 26},
    Name{"minus", 27},
    Name{"8", 28},
    Name{"0", 29},
    Name{"right-bracket", 30},
    Name{"o", 31},
    Name{"u", 32},
    Name{"left-bracket", 33},
    Name{"i", 34},
    Name{"p", 35},
    Name{"return", 36},
    Name{"l", 37},
    Name{"j", 38},
    Name{"quote", 39},
    Name{"k", 40},
    Name{"semicolon", 41},
    Name{"backslash", 42},
    Name{"comma", 43},
    Name{"slash", 44},
    Name{"n", 45},
    Name{"m", 46},
    Name{"period", 47},
    Name{"tab", 48},
    Name{"space", 49},
    Name{"grave", 50},
    Name{"delete", 51},
    Name{"escape", 53},
    Name{"f5", 96},
    Name{"f6", 97},
    Name{"f7", 98},
    Name{"f3", 99},
    Name{"f8", 100},
    Name{"f9", 101},
    Name{"f11", 103},
    Name{"f10", 109},
    Name{"f12", 111},
    Name{"home", 115},
    Name{"page-up", 116},
    Name{"forward-delete", 117},
    Name{"f4", 118},
    Name{"end", 119},
    Name{"f2", 120},
    Name{"page-down", 121},
    Name{"f1", 122},
    Name{"left", 123},
    Name{"right", 124},
    Name{"down", 125},
    Name{"up", 126},
};

struct Modifier {
    std::string_view name;
    std::uint64_t flag;
};

constexpr std::array modifiers = {Modifier{"cmd", KeyStroke::command}, Modifier{"ctrl", KeyStroke::control},
                                  Modifier{"alt", KeyStroke::option}, Modifier{"shift", KeyStroke::shift}};

constexpr std::string_view codePrefix = "code-";
constexpr std::int64_t lastCode = 127;

std::optional<std::int64_t> codeOf(std::string_view name) {
    const auto found = std::find_if(keys.begin(), keys.end(), [name](const Name& key) { return key.name == name; });
    if (found != keys.end()) return found->code;
    if (!name.starts_with(codePrefix)) return std::nullopt;
    std::int64_t code = -1;
    const char* end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data() + codePrefix.size(), end, code);
    if (error != std::errc() || stop != end || code < 0 || code > lastCode) return std::nullopt;
    return code;
}

std::string nameOf(std::int64_t code) {
    const auto found = std::find_if(keys.begin(), keys.end(), [code](const Name& key) { return key.code == code; });
    return found != keys.end() ? std::string(found->name) : std::string(codePrefix) + std::to_string(code);
}

}  // namespace

std::optional<KeyStroke> KeyStroke::parse(std::string_view text) {
    KeyStroke stroke;
    for (auto plus = text.find('+'); plus != std::string_view::npos; plus = text.find('+')) {
        const auto name = text.substr(0, plus);
        const auto found = std::find_if(modifiers.begin(), modifiers.end(),
                                        [name](const Modifier& modifier) { return modifier.name == name; });
        if (found == modifiers.end() || (stroke.flags & found->flag) != 0) return std::nullopt;
        stroke.flags |= found->flag;
        text.remove_prefix(plus + 1);
    }
    const auto code = codeOf(text);
    if (!code) return std::nullopt;
    stroke.keyCode = *code;
    return stroke;
}

std::string KeyStroke::text() const {
    std::string made;
    for (const auto& [name, flag] : modifiers) {
        if ((flags & flag) != 0) made += std::string(name) + "+";
    }
    return made + nameOf(keyCode);
}

char KeyStroke::letter() const {
    const std::string name = nameOf(keyCode);
    return name.size() == 1 && name[0] >= 'a' && name[0] <= 'z' ? name[0] : '\0';
}

}  // namespace vantrel::virtualmac
