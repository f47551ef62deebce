#pragma once

#include "platform/network/JSON.h"

namespace vantrel {

/// JSON through nlohmann-json. Any thread; no state. Of equal keys in one object the last one counts. An object is
/// written with its keys in byte order; a number that is whole has no decimal point.
class PortableJSONSerialization final : public JSONSerialization {
  public:
    /// Levels of arrays and objects that are read and written.
    static constexpr std::size_t maximumDepth = 512;
    /// Values read from one text, arrays and objects included. A value takes far more memory than the two bytes that
    /// it may have been written with.
    static constexpr std::size_t maximumValues = 1'000'000;

    /// Empty also for a text of more than maximumValues values.
    std::optional<JSONValue> parse(std::string_view bytes) const override;

    /// Empty for a text that is not UTF-8, a number that is not finite, or more than maximumDepth levels.
    std::optional<std::string> serialise(const JSONObject& object) const override;
};

}  // namespace vantrel
