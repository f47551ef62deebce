#pragma once

#include <memory>

#include "platform/Computer.h"
#include "platform/ui/Application.h"
#include "session/MainWindowController.h"

namespace vantrel {

/// Allows one instance only, and allows quitting when no lockdown is active. Main thread.
class AppDelegate : public ApplicationDelegate {
  public:
    explicit AppDelegate(const Computer& computer) : computer_(computer) {}

    void applicationDidFinishLaunching() override;
    TerminateReply applicationShouldTerminate() override;

  private:
    bool isOnlyInstance() const;

    const Computer computer_;
    std::shared_ptr<MainWindowController> mainWindowController_;
};

}  // namespace vantrel
