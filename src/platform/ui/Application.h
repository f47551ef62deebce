#pragma once

#include <memory>

#include "platform/ui/Menu.h"

namespace vantrel {

/// NSApplicationActivationPolicy.
enum class ActivationPolicy { regular = 0 };

/// NSApplicationTerminateReply.
enum class TerminateReply { cancel = 0, now = 1 };

/// NSApplicationDelegate. Both operations run on the main thread, from an event.
class ApplicationDelegate {
  public:
    virtual ~ApplicationDelegate() = default;

    virtual void applicationDidFinishLaunching() = 0;
    virtual TerminateReply applicationShouldTerminate() = 0;
};

/// The application object (NSApplication). Main thread.
class Application {
  public:
    virtual ~Application() = default;

    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    /// Held weakly.
    virtual void setDelegate(std::weak_ptr<ApplicationDelegate> delegate) = 0;
    virtual void setMainMenu(const Menu& menu) = 0;

    /// Runs the event loop. Tells the delegate once that launching has finished. Returns when the application has been
    /// terminated, except on macOS, where the process ends instead.
    virtual void run() = 0;

    /// activate: brings the application to the front.
    virtual void activate() = 0;

    /// terminate: asks the delegate, and ends the application if it answers `now`.
    virtual void terminate() = 0;
};

}  // namespace vantrel
