#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/network/JSON.h"

namespace vantrel {

/// Writes one JSON object compactly. For a single use.
class JSONWriter {
  public:
    explicit JSONWriter(std::size_t maximumDepth) : maximumDepth_(maximumDepth) {}

    /// Empty if the object cannot be written.
    std::optional<std::string> write(const JSONObject& object);

  private:
    bool append(const JSONValue& value, std::size_t depth);
    bool append(const JSONObject& object, std::size_t depth);
    bool append(const JSONArray& array, std::size_t depth);
    bool append(const std::string& text);
    bool append(double number);

    std::size_t maximumDepth_;
    std::string text_;
};

}  // namespace vantrel
