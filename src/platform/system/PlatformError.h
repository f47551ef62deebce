#pragma once

#include <string>

namespace vantrel {

/// What the platform says of a failure (NSError): its text in the user's language, for logs and messages.
struct PlatformError {
    std::string localizedDescription;
};

}  // namespace vantrel
