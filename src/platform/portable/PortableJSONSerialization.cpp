#include "platform/portable/PortableJSONSerialization.h"

#include "platform/portable/JSONReader.h"
#include "platform/portable/JSONWriter.h"

namespace vantrel {

std::optional<JSONValue> PortableJSONSerialization::parse(std::string_view bytes) const {
    return readJSON(bytes, maximumDepth, maximumValues);
}

std::optional<std::string> PortableJSONSerialization::serialise(const JSONObject& object) const {
    return JSONWriter(maximumDepth).write(object);
}

}  // namespace vantrel
