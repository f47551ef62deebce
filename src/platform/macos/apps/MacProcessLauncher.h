#pragma once

#include "platform/apps/ProcessLauncher.h"

namespace vantrel::macos {

/// NSTask and kill(2).
class MacProcessLauncher final : public ProcessLauncher {
  public:
    std::variant<ProcessIdentifier, PlatformError> launch(std::string_view executablePath,
                                                          const std::vector<std::string>& arguments) override;
    bool sendSignal(ProcessIdentifier process, int signal) override;
};

}  // namespace vantrel::macos
