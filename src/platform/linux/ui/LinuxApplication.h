#pragma once

#include "platform/ui/Application.h"

namespace vantrel::linuxdesktop {

class MainThread;
class MenuBars;
class X11Windows;

/// The application object on Qt's event loop. Main thread.
class LinuxApplication final : public Application {
  public:
    /// `endProcess` is called when the delegate agrees to terminate, and does not return: as on macOS, nothing that
    /// waited for a modal alert happens any more. Without it, the event loops end and run() returns.
    LinuxApplication(MainThread& mainThread, MenuBars& menuBars, X11Windows& windows, Block endProcess);

    void setActivationPolicy(ActivationPolicy policy) override;
    void setDelegate(std::weak_ptr<ApplicationDelegate> delegate) override;
    void setMainMenu(const Menu& menu) override;
    void run() override;
    void activate() override;
    void terminate() override;

  private:
    MainThread& mainThread_;
    MenuBars& menuBars_;
    X11Windows& windows_;
    const Block endProcess_;
    std::weak_ptr<ApplicationDelegate> delegate_;
    bool launched_ = false;
    bool terminated_ = false;
};

}  // namespace vantrel::linuxdesktop
