#pragma once

#include <condition_variable>
#include <mutex>
#include <string>

#include "platform/apps/ApplicationOpener.h"
#include "platform/linux/threads/BackgroundQueue.h"

namespace vantrel::linuxdesktop {

class X11Windows;

/// Opens addresses with the application in a folder `Name.app`, or with the installed browser that stands for it (see
/// installedBrowser()): starts its executable in Contents/MacOS with the addresses as arguments. If that process hands
/// them to a running instance and exits, the running instance is reported.
///
/// The handler is called on a background thread, once the application has a window, has ended, or two seconds have
/// passed. Its application is null if the started process has exited and no other one has the same bundle identifier.
/// The destructor cuts the waits of pending handlers short and waits for the handlers.
class LinuxApplicationOpener final : public ApplicationOpener {
  public:
    LinuxApplicationOpener(ProcessLauncher& launcher, const RunningApplications& applications, X11Windows& windows,
                           DelayedWork& delayedWork);
    ~LinuxApplicationOpener() override;

    void open(const std::vector<URL>& urls, const URL& application, bool activates, Completion completion) override;

  private:
    Result opened(const std::vector<URL>& urls, const URL& application, bool activates);
    std::shared_ptr<RunningApplication> settled(ProcessIdentifier started, const std::string& bundleIdentifier);
    /// False if the opener is being destroyed.
    bool sleep(double seconds);

    ProcessLauncher& launcher_;
    const RunningApplications& applications_;
    X11Windows& windows_;
    std::mutex mutex_;
    std::condition_variable going_;
    bool isGoing_ = false;
    BackgroundQueue queue_;
};

}  // namespace vantrel::linuxdesktop
