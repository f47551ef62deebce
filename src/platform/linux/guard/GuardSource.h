#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "platform/linux/guard/Guards.h"

namespace vantrel::linuxdesktop {

class MainThread;

/// Guards for whatever holds the person: the tap, a cover, a browser on a desktop of its own. They run as long as
/// somebody holds them. Any thread; must not outlive the main thread's object.
class GuardSource {
  public:
    explicit GuardSource(MainThread& mainThread, std::string executable = GuardProcess::standardExecutable())
        : mainThread_(mainThread), executable_(std::move(executable)) {}

    /// The guards that run, or new ones. Null if none can be started.
    std::shared_ptr<Guards> guards();

  private:
    MainThread& mainThread_;
    const std::string executable_;
    std::mutex mutex_;
    std::weak_ptr<Guards> running_;
};

}  // namespace vantrel::linuxdesktop
