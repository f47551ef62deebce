#pragma once

#include <optional>

#include "platform/virtual/apps/InstalledApplication.h"

namespace vantrel::rehearsal {

/// How an application differs from a well-behaved one.
struct Behaviour {
    bool ignoresTerminate = false;
    bool ignoresForceTerminate = false;
    bool refusesForceTerminate = false;
    bool declinesActivation = false;
    /// Seconds until it carries out a request to end, or signal 9 takes effect.
    std::optional<double> exitDelay;
    std::optional<double> killDelay;

    bool operator==(const Behaviour&) const = default;

    void applyTo(virtualmac::ApplicationDescription& application) const;
};

}  // namespace vantrel::rehearsal
