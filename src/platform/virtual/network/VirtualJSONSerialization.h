#pragma once

#include <functional>
#include <mutex>

#include "platform/portable/PortableJSONSerialization.h"

namespace vantrel::virtualmac {

/// JSON whose serialisation can be made to fail.
class VirtualJSONSerialization final : public JSONSerialization {
  public:
    using Predicate = std::function<bool(const JSONObject&)>;

    std::optional<JSONValue> parse(std::string_view bytes) const override { return json_.parse(bytes); }
    std::optional<std::string> serialise(const JSONObject& object) const override;

    /// Driver-facing, any thread: the next `count` serialisations fail.
    void failNext(int count);
    /// Serialisations of objects that match the predicate fail; null for none. Called on the serialising thread.
    void failWhere(Predicate predicate);

  private:
    PortableJSONSerialization json_;
    mutable std::mutex mutex_;
    mutable int failures_ = 0;
    Predicate predicate_;
};

}  // namespace vantrel::virtualmac
