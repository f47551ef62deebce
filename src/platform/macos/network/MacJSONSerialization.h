#pragma once

#include "platform/network/JSON.h"

namespace vantrel::macos {

class MacJSONSerialization final : public JSONSerialization {
  public:
    std::optional<JSONValue> parse(std::string_view bytes) const override;
    std::optional<std::string> serialise(const JSONObject& object) const override;
};

}  // namespace vantrel::macos
