#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/ui/Application.h"
#include "platform/virtual/apps/VirtualProcessLauncher.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/ui/VirtualWindows.h"
#include "platform/virtual/world/Activations.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// The application object.
class VirtualApplication final : public Application {
  public:
    struct Dependencies {
        Engine& engine;
        VirtualDesktop& desktop;
        Activations& activations;
        VirtualProcessLauncher& processes;
        VirtualWindows& windows;
    };

    explicit VirtualApplication(Dependencies dependencies)
        : engine_(dependencies.engine), dependencies_(dependencies) {}

    void setActivationPolicy(ActivationPolicy policy) override;
    void setDelegate(std::weak_ptr<ApplicationDelegate> delegate) override;
    void setMainMenu(const Menu& menu) override;
    void run() override;
    void activate() override;
    /// Once the delegate has answered `now`, nothing more of the process is recorded.
    void terminate() override;

    /// The lower level of activate(), as in the system: -[NSApplication activate]. It comes to the front at once, if
    /// the system lets it.
    void requestActivation();
    /// "Hide Others" of another application hides this one; coming to the front ends that.
    bool isHidden() const { return dependencies_.desktop.isHidden(dependencies_.processes.ownProcess()); }
    void unhide() { dependencies_.desktop.setHidden(dependencies_.processes.ownProcess(), false); }

    /// From now on the main thread runs nothing more once terminate() has ended the process, as on a Mac, where the
    /// call does not return. Such a Mac cannot be destroyed: see VirtualMac::hasExited().
    void exitWhenTerminated() { exitsWhenTerminated_ = true; }

    /// Driver-facing, any thread.
    Menu mainMenu() const;

    /// The effect of choosing the item: its target, or the application's own handling of its action. Main thread, in an
    /// event. False if nothing handles it.
    bool perform(const MenuItem& item);

  private:
    /// At once, the request has told it already.
    void comeToFront(bool isTold);

    Engine& engine_;
    const Dependencies dependencies_;
    std::atomic<bool> exitsWhenTerminated_ = false;
    mutable std::mutex mutex_;
    std::weak_ptr<ApplicationDelegate> delegate_;
    Menu mainMenu_;
};

/// The enabled item with that key equivalent, in the menu or its submenus. Null if there is none.
const MenuItem* findKeyEquivalent(const Menu& menu, std::string_view key);

}  // namespace vantrel::virtualmac
