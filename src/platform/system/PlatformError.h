#pragma once

#include <string>

namespace vantrel {

/// The platform's description of a failure (NSError): a text in the user's language, for logs and messages. It is UTF-8
/// and never empty.
struct PlatformError {
    std::string localizedDescription;
};

}  // namespace vantrel
