#include "platform/portable/JSONWriter.h"

#include <cmath>
#include <cstdint>
#include <exception>
#include <nlohmann/json.hpp>
#include <utility>

namespace vantrel {

namespace {

// Every whole number up to here can be stored in a double.
constexpr double largestWhole = 9007199254740992.0;

}  // namespace

std::optional<std::string> JSONWriter::write(const JSONObject& object) {
    if (!append(object, 1)) return std::nullopt;
    return std::move(text_);
}

bool JSONWriter::append(const JSONValue& value, std::size_t depth) {
    if (const auto* object = value.object()) return append(*object, depth + 1);
    if (const auto* array = value.array()) return append(*array, depth + 1);
    if (const auto* string = value.string()) return append(*string);
    if (const auto* number = std::get_if<double>(&value.value)) return append(*number);
    const bool* boolean = value.boolean();
    text_ += boolean == nullptr ? "null" : *boolean ? "true" : "false";
    return true;
}

bool JSONWriter::append(const JSONObject& object, std::size_t depth) {
    if (depth > maximumDepth_) return false;
    text_ += '{';
    bool first = true;
    for (const auto& [key, value] : object) {
        if (!std::exchange(first, false)) text_ += ',';
        if (!append(key)) return false;
        text_ += ':';
        if (!append(value, depth)) return false;
    }
    text_ += '}';
    return true;
}

bool JSONWriter::append(const JSONArray& array, std::size_t depth) {
    if (depth > maximumDepth_) return false;
    text_ += '[';
    bool first = true;
    for (const auto& value : array) {
        if (!std::exchange(first, false)) text_ += ',';
        if (!append(value, depth)) return false;
    }
    text_ += ']';
    return true;
}

bool JSONWriter::append(const std::string& text) {
    try {
        // Foundation escapes slashes.
        for (const char byte : nlohmann::json(text).dump()) {
            if (byte == '/') text_ += '\\';
            text_ += byte;
        }
        return true;
    } catch (const std::exception&) {
        return false;  // not UTF-8
    }
}

bool JSONWriter::append(double number) {
    if (!std::isfinite(number)) return false;
    if (number == std::trunc(number) && std::fabs(number) <= largestWhole) {
        text_ += std::to_string(static_cast<std::int64_t>(number));
    } else {
        text_ += nlohmann::json(number).dump();
    }
    return true;
}

}  // namespace vantrel
