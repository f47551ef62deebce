#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/system/PlatformError.h"

namespace vantrel {

using ProcessIdentifier = std::int32_t;

/// Starts a process (NSTask) or signals one (kill). Any thread.
class ProcessLauncher {
  public:
    virtual ~ProcessLauncher() = default;

    /// Starts the executable with exactly these arguments: no shell, the client's environment, directory and streams.
    /// Does not wait for the process. An argument that is not UTF-8, and a zero byte in one or in the path, is a
    /// failure: not every computer could pass it on as it stands.
    virtual std::variant<ProcessIdentifier, PlatformError> launch(std::string_view executablePath,
                                                                  const std::vector<std::string>& arguments) = 0;

    /// kill(2). False if the system refuses.
    virtual bool sendSignal(ProcessIdentifier process, int signal) = 0;
};

}  // namespace vantrel
