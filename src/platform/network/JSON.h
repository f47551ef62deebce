#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vantrel {

struct JSONValue;
using JSONArray = std::vector<JSONValue>;
using JSONObject = std::map<std::string, JSONValue, std::less<>>;

/// A JSON value. Booleans and numbers are different: true is not 1.
struct JSONValue {
    std::variant<std::nullptr_t, bool, double, std::string, JSONArray, JSONObject> value = nullptr;

    JSONValue() = default;
    JSONValue(bool boolean) : value(boolean) {}
    JSONValue(double number) : value(number) {}
    JSONValue(std::string text) : value(std::move(text)) {}
    JSONValue(const char* text) : value(std::string(text)) {}
    JSONValue(JSONArray array) : value(std::move(array)) {}
    JSONValue(JSONObject object) : value(std::move(object)) {}

    const bool* boolean() const { return std::get_if<bool>(&value); }
    const std::string* string() const { return std::get_if<std::string>(&value); }
    const JSONArray* array() const { return std::get_if<JSONArray>(&value); }
    const JSONObject* object() const { return std::get_if<JSONObject>(&value); }

    bool operator==(const JSONValue&) const = default;
};

/// NSJSONSerialization, with no options. Any thread.
class JSONSerialization {
  public:
    virtual ~JSONSerialization() = default;

    /// JSONObjectWithData:. The top level must be an array or an object. Empty for anything else: not JSON, not UTF-8,
    /// or nested deeper than 512 levels. It may also be empty for a text of more than a million values.
    virtual std::optional<JSONValue> parse(std::string_view bytes) const = 0;

    /// dataWithJSONObject:, compact, with slashes escaped. Empty if the object cannot be written.
    virtual std::optional<std::string> serialise(const JSONObject& object) const = 0;
};

}  // namespace vantrel
