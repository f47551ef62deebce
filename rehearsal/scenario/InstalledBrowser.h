#pragma once

#include <map>
#include <optional>
#include <string>

#include "rehearsal/scenario/Behaviour.h"

namespace vantrel::rehearsal {

enum class BrowserName { chrome, edge, firefox, safari };

/// A browser as it is installed. Times are seconds; what is empty is the virtual Mac's own.
struct InstalledBrowser {
    Behaviour behaviour = {};
    /// It lies in the home folder and nowhere else.
    bool isInHome = false;
    /// The client cannot start it, and that is the system's error.
    std::optional<std::string> startFailure = {};
    /// From its start until it is one of the running applications.
    std::optional<double> appearsAfter = {};
    /// From its start, or from an address that it is asked to open, until its window opens.
    std::optional<double> windowAfter = {};
    /// From its start until it ends by itself.
    std::optional<double> exitsAfter = {};
    /// The process that is started ends and another one goes on.
    bool forks = false;
    /// Safari only: from the request to open an address until the system tells which application opens it.
    std::optional<double> answerDelay = {};
    /// Safari only: the system does not tell which application opens it.
    bool answersWithNothing = false;

    bool operator==(const InstalledBrowser&) const = default;
};

/// What is installed.
using InstalledBrowsers = std::map<BrowserName, InstalledBrowser>;

}  // namespace vantrel::rehearsal
