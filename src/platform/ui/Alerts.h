#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vantrel {

/// NSAlertStyle.
enum class AlertStyle { warning = 0, informational = 1, critical = 2 };

/// NSAlert. With no buttons the system gives it one that says OK; the first is the default one.
struct Alert {
    AlertStyle style = AlertStyle::warning;
    std::string messageText;
    std::string informativeText;
    std::vector<std::string> buttons;
};

/// Modal alerts. Main thread.
class Alerts {
  public:
    virtual ~Alerts() = default;

    /// runModal: shows the alert and returns once it is dismissed, with the index of the chosen button (0 for the
    /// first; the system's own values count from 1000). Meanwhile timers of the default mode stand still; see
    /// DispatchQueue for the main queue. A client that shows no window has its alert shown where the user is, above
    /// another application's full screen too.
    virtual std::size_t runModal(const Alert& alert) = 0;
};

}  // namespace vantrel
