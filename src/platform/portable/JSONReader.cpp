#include "platform/portable/JSONReader.h"

#include <exception>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

/// Builds the value from the parser's events; the parser itself does not recurse. Returning false stops the parser.
class Builder final : public nlohmann::json_sax<nlohmann::json> {
  public:
    Builder(std::size_t maximumDepth, std::size_t maximumValues)
        : maximumDepth_(maximumDepth), valuesLeft_(maximumValues) {}

    std::optional<JSONValue> take() { return std::move(result_); }

    bool null() override { return add(JSONValue()); }
    bool boolean(bool value) override { return add(JSONValue(value)); }
    bool number_integer(number_integer_t value) override { return add(JSONValue(static_cast<double>(value))); }
    bool number_unsigned(number_unsigned_t value) override { return add(JSONValue(static_cast<double>(value))); }
    bool number_float(number_float_t value, const string_t&) override { return add(JSONValue(value)); }
    bool string(string_t& value) override { return add(JSONValue(std::move(value))); }
    bool binary(binary_t&) override { return false; }

    bool start_object(std::size_t) override { return open(JSONValue(JSONObject())); }
    bool start_array(std::size_t) override { return open(JSONValue(JSONArray())); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }

    bool key(string_t& name) override {
        levels_.back().key = std::move(name);
        return true;
    }

    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }

  private:
    struct Level {
        JSONValue container;
        std::string key;
    };

    bool open(JSONValue container) {
        if (levels_.size() >= maximumDepth_ || valuesLeft_ == 0) return false;
        --valuesLeft_;
        levels_.push_back({std::move(container), {}});
        return true;
    }

    bool close() {
        JSONValue finished = std::move(levels_.back().container);
        levels_.pop_back();
        if (levels_.empty()) {
            result_ = std::move(finished);
        } else {
            put(std::move(finished));
        }
        return true;
    }

    bool add(JSONValue value) {
        if (levels_.empty() || valuesLeft_ == 0) return false;
        --valuesLeft_;
        put(std::move(value));
        return true;
    }

    void put(JSONValue value) {
        Level& level = levels_.back();
        if (auto* array = std::get_if<JSONArray>(&level.container.value)) {
            array->push_back(std::move(value));
        } else if (auto* object = std::get_if<JSONObject>(&level.container.value)) {
            object->insert_or_assign(std::move(level.key), std::move(value));
        }
    }

    std::size_t maximumDepth_;
    std::size_t valuesLeft_;
    std::vector<Level> levels_;
    std::optional<JSONValue> result_;
};

}  // namespace

std::optional<JSONValue> readJSON(std::string_view bytes, std::size_t maximumDepth, std::size_t maximumValues) {
    // The parser would take a zero byte for the end of its input and ignore the rest.
    if (bytes.find('\0') != std::string_view::npos) return std::nullopt;
    try {
        Builder builder(maximumDepth, maximumValues);
        if (!nlohmann::json::sax_parse(bytes.begin(), bytes.end(), &builder)) return std::nullopt;
        return builder.take();
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

}  // namespace vantrel
