#pragma once

#include <string>

namespace vantrel {

/// NSISO8601DateFormatter with its default options. Any thread.
class ISO8601DateFormatter {
  public:
    virtual ~ISO8601DateFormatter() = default;

    /// Internet date-time in UTC, whole seconds, such as 2024-05-17T09:41:07Z.
    virtual std::string string(double secondsSince1970) const = 0;
};

}  // namespace vantrel
