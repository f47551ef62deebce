#pragma once

#include <condition_variable>
#include <mutex>
#include <string>

#include "platform/apps/ApplicationOpener.h"
#include "platform/linux/threads/BackgroundQueue.h"

namespace vantrel::linuxdesktop {

class X11Windows;

/// Opens addresses with an application that lies in a folder `Name.app`: starts its executable in Contents/MacOS with
/// the addresses as arguments. A second instance that hands them to a running one and leaves is followed there.
///
/// The handler is called on a background thread, once the application has a window, has ended or has had two seconds
/// for either. Its application is null when the started process has left and none of the same bundle identifier runs.
/// The destructor waits for pending handlers and hurries them.
class LinuxApplicationOpener final : public ApplicationOpener {
  public:
    LinuxApplicationOpener(ProcessLauncher& launcher, const RunningApplications& applications, X11Windows& windows,
                           DelayedWork& delayedWork);
    ~LinuxApplicationOpener() override;

    void open(const std::vector<URL>& urls, const URL& application, bool activates, Completion completion) override;

  private:
    Result opened(const std::vector<URL>& urls, const URL& application, bool activates);
    std::shared_ptr<RunningApplication> settled(ProcessIdentifier started, const std::string& bundleIdentifier);
    /// False when the opener is going.
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
