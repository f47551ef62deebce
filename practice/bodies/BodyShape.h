#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "practice/bodies/BodyError.h"

namespace vantrel::practice {

/// The keys of an object with their types. It must have all of them and no others.
class BodyShape {
  public:
    /// A count is a whole number from 0 on.
    enum class Type { string, boolean, array, count };
    struct Key {
        std::string name;
        Type type;
    };

    explicit BodyShape(std::vector<Key> keys) : keys_(std::move(keys)) {}

    /// What is wrong with the value, if anything. `name` stands for the value in the message.
    std::optional<BodyError> wrong(const nlohmann::json& value, const std::string& name) const;

  private:
    std::vector<Key> keys_;
};

/// Whether the text has the form 2024-05-17T09:41:07Z.
bool isISO8601Time(std::string_view text);

}  // namespace vantrel::practice
