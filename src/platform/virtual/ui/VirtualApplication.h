#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/ui/Application.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// The application object.
class VirtualApplication final : public Application {
  public:
    VirtualApplication(Engine& engine, VirtualDesktop& desktop, ProcessIdentifier ownProcess)
        : engine_(engine), desktop_(desktop), ownProcess_(ownProcess) {}

    void setActivationPolicy(ActivationPolicy policy) override;
    void setDelegate(std::weak_ptr<ApplicationDelegate> delegate) override;
    void setMainMenu(const Menu& menu) override;
    void run() override;
    /// Comes to the front at once.
    void activate() override;
    /// Once the delegate has answered `now`, nothing more of the process is recorded.
    void terminate() override;

    /// From now on the main thread runs nothing more once terminate() has ended the process, as on a Mac, where the
    /// call does not return. Such a Mac cannot be destroyed: see VirtualMac::hasExited().
    void exitWhenTerminated() { exitsWhenTerminated_ = true; }

    /// Driver-facing, any thread.
    Menu mainMenu() const;

    /// The effect of choosing the item: its target, or the application's own handling of its action. Main thread, in an
    /// event. False if nothing handles it.
    bool perform(const MenuItem& item);

  private:
    Engine& engine_;
    VirtualDesktop& desktop_;
    const ProcessIdentifier ownProcess_;
    std::atomic<bool> exitsWhenTerminated_ = false;
    mutable std::mutex mutex_;
    std::weak_ptr<ApplicationDelegate> delegate_;
    Menu mainMenu_;
};

/// The enabled item with that key equivalent, in the menu or its submenus. Null if there is none.
const MenuItem* findKeyEquivalent(const Menu& menu, std::string_view key);

}  // namespace vantrel::virtualmac
