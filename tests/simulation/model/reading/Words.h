#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vantrel::simulation {

/// Reads a text from its front, piece by piece. What does not fit leaves it as it is.
class Words {
  public:
    explicit Words(std::string_view text) : rest_(text) {}

    std::string_view rest() const { return rest_; }
    bool atEnd() const { return rest_.empty(); }

    bool skip(std::string_view piece);
    /// What comes before the mark, which is skipped; none without a mark.
    std::optional<std::string_view> upTo(std::string_view mark);
    std::optional<std::int64_t> integer();
    std::optional<double> number();

  private:
    std::string_view rest_;
};

/// The text as a whole number, with nothing around it.
std::optional<std::int64_t> integerOf(std::string_view text);

}  // namespace vantrel::simulation
