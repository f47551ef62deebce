#pragma once

#include "platform/network/JSON.h"

namespace vantrel {

/// JSON through nlohmann-json. Any thread; no state. If an object repeats a key, the last value counts. Objects are
/// written with their keys in byte order, and whole numbers without a decimal point.
class PortableJSONSerialization final : public JSONSerialization {
  public:
    /// The most levels of arrays and objects that are read or written.
    static constexpr std::size_t maximumDepth = 512;
    /// The most values read from one text, arrays and objects included. A value takes far more memory than the two
    /// bytes that it may have in the text.
    static constexpr std::size_t maximumValues = 1'000'000;

    /// Also empty for a text of more than maximumValues values.
    std::optional<JSONValue> parse(std::string_view bytes) const override;

    /// Empty for a text that is not UTF-8, a number that is not finite, or more than maximumDepth levels.
    std::optional<std::string> serialise(const JSONObject& object) const override;
};

}  // namespace vantrel
