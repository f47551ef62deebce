#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vantrel {

/// NSAlertStyle.
enum class AlertStyle { warning = 0, informational = 1, critical = 2 };

/// NSAlert. Without buttons the system adds one that says OK. The first button is the default.
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
    /// first; the system's own values count from 1000). Meanwhile timers of the default mode stop; for the main queue
    /// see DispatchQueue. If the client shows no window, the alert appears where the user is, even above another
    /// application's full screen: one that is not seen after a second is ordered to the front, and one that nobody can
    /// see for ten seconds is dismissed with its last button. After its answer what was in front before is so again,
    /// unless the client shows a window by then.
    virtual std::size_t runModal(const Alert& alert) = 0;
};

}  // namespace vantrel
