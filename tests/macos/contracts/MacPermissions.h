#pragma once

#include <optional>
#include <string>

namespace vantrel::macos {

/// What a person has to grant before some suites can be held. The system counts it for the application that the tests
/// are started from, such as Terminal.
class MacPermissions {
  public:
    /// Has the system ask for what is missing, and says on standard output what that is. Does not wait for an answer.
    static void ask();

    /// What the suite of that name still lacks; without a value it can be held.
    static std::optional<std::string> missingFor(const std::string& suite);
};

}  // namespace vantrel::macos
