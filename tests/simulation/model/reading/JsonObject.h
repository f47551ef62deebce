#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantrel::simulation {

/// A JSON object in the compact form in which transcripts show bodies: its keys with the values as they are written.
class JsonObject {
  public:
    /// None if the text is no object.
    static std::optional<JsonObject> read(std::string_view text);

    std::size_t size() const { return members_.size(); }
    /// As written, with its quotation marks if it is a string; none if it is absent.
    std::optional<std::string_view> raw(std::string_view key) const;
    /// None if it is absent or no string.
    std::optional<std::string> text(std::string_view key) const;
    bool isTrue(std::string_view key) const { return raw(key) == "true"; }

    /// The values of an array as they are written; none if the text is no array.
    static std::optional<std::vector<std::string_view>> elements(std::string_view array);

  private:
    std::vector<std::pair<std::string_view, std::string_view>> members_;
};

}  // namespace vantrel::simulation
