#include "tests/simulation/model/reading/JsonObject.h"

#include <charconv>

namespace vantrel::simulation {
namespace {

/// How long the value is that the text begins with; 0 if it has no end.
std::size_t valueLength(std::string_view text) {
    int depth = 0;
    bool quoted = false;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char character = text[index];
        if (quoted) {
            if (character == '\\') ++index;
            if (character == '"') quoted = false;
        } else if (character == '"') {
            quoted = true;
        } else if (character == '{' || character == '[') {
            ++depth;
        } else if (character == '}' || character == ']') {
            if (depth-- == 0) return index;
        } else if (character == ',' && depth == 0) {
            return index;
        }
    }
    return depth == 0 && !quoted ? text.size() : 0;
}

void appendCodePoint(std::string& text, unsigned code) {
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0 | (code >> 6));
        text += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | (code >> 12));
        text += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (code & 0x3F));
    }
}

std::string unescaped(std::string_view text) {
    static constexpr std::string_view letters = "bfnrt";
    static constexpr std::string_view meant = "\b\f\n\r\t";
    std::string plain;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] != '\\' || index + 1 == text.size()) {
            plain += text[index];
            continue;
        }
        const char escaped = text[++index];
        if (escaped == 'u' && index + 4 < text.size()) {
            unsigned code = 0;
            std::from_chars(text.data() + index + 1, text.data() + index + 5, code, 16);
            appendCodePoint(plain, code);
            index += 4;
        } else {
            const std::size_t letter = letters.find(escaped);
            plain += letter == std::string_view::npos ? escaped : meant[letter];
        }
    }
    return plain;
}

}  // namespace

std::optional<JsonObject> JsonObject::read(std::string_view text) {
    if (text.size() < 2 || text.front() != '{' || text.back() != '}') return std::nullopt;
    text = text.substr(1, text.size() - 2);
    JsonObject object;
    while (!text.empty()) {
        const std::size_t keyEnds = text.front() == '"' ? text.find("\":", 1) : std::string_view::npos;
        if (keyEnds == std::string_view::npos) return std::nullopt;
        const std::string_view key = text.substr(1, keyEnds - 1);
        text.remove_prefix(keyEnds + 2);
        const std::size_t length = valueLength(text);
        if (length == 0) return std::nullopt;
        object.members_.emplace_back(key, text.substr(0, length));
        text.remove_prefix(length);
        if (!text.empty() && text.front() != ',') return std::nullopt;
        if (!text.empty()) text.remove_prefix(1);
    }
    return object;
}

std::optional<std::string_view> JsonObject::raw(std::string_view key) const {
    for (const auto& [name, value] : members_) {
        if (name == key) return value;
    }
    return std::nullopt;
}

std::optional<std::string> JsonObject::text(std::string_view key) const {
    const auto value = raw(key);
    if (!value || value->size() < 2 || value->front() != '"') return std::nullopt;
    return unescaped(value->substr(1, value->size() - 2));
}

std::optional<std::vector<std::string_view>> JsonObject::elements(std::string_view array) {
    if (array.size() < 2 || array.front() != '[' || array.back() != ']') return std::nullopt;
    array = array.substr(1, array.size() - 2);
    std::vector<std::string_view> values;
    while (!array.empty()) {
        const std::size_t length = valueLength(array);
        if (length == 0) return std::nullopt;
        values.push_back(array.substr(0, length));
        array.remove_prefix(length);
        if (!array.empty()) array.remove_prefix(1);
    }
    return values;
}

}  // namespace vantrel::simulation
