#pragma once

#include <optional>
#include <string>

namespace vantrel::macos {

/// The permissions that some suites need from a person. The system grants them to the application that started the
/// tests, such as Terminal.
class MacPermissions {
  public:
    /// Makes the system ask for the missing permissions, and prints their names. Does not wait for an answer.
    static void ask();

    /// What that suite still lacks. Empty if it can run.
    static std::optional<std::string> missingFor(const std::string& suite);

    /// Why this version of the system may decline an activation. Empty if it may not.
    static std::optional<std::string> declinedActivation();
    /// Why AppKit and the system may not show an alert as it asks to be.
    static std::string declinedAlerts();
};

}  // namespace vantrel::macos
