#pragma once

#include <optional>
#include <string>

namespace vantrel {

/// The main bundle (NSBundle). Any thread.
class Bundle {
  public:
    virtual ~Bundle() = default;

    /// Empty if the program does not run from a bundle that names one.
    virtual std::optional<std::string> identifier() const = 0;
};

}  // namespace vantrel
