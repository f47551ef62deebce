#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/system/PlatformError.h"

namespace vantrel {

using ProcessIdentifier = std::int32_t;

/// Starting a process (NSTask) and signalling one (kill). Any thread.
class ProcessLauncher {
  public:
    virtual ~ProcessLauncher() = default;

    /// Starts the executable with the arguments as they stand: no shell, the client's environment, directory and
    /// streams. The process is not waited for.
    virtual std::variant<ProcessIdentifier, PlatformError> launch(std::string_view executablePath,
                                                                  const std::vector<std::string>& arguments) = 0;

    /// kill(2). False when the system refuses.
    virtual bool sendSignal(ProcessIdentifier process, int signal) = 0;
};

}  // namespace vantrel
