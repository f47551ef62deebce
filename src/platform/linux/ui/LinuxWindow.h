#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/threads/Block.h"
#include "platform/ui/Window.h"

class QKeyEvent;
class QWidget;

namespace vantrel::linuxdesktop {

class ControlWidget;
class LinuxScreens;
class MainThread;
class MenuBars;
class WindowWidget;
class X11Connection;
class X11Windows;

/// What a window needs.
struct WindowDependencies {
    MainThread& mainThread;
    LinuxScreens& screens;
    MenuBars& menuBars;
    X11Connection& connection;
    X11Windows& windows;
    /// Asks the application to terminate. Closing a window means this, because there is no Dock.
    Block terminate;
};

/// A window of fixed size. It has the main menu in a bar at its top and the content below. Main thread.
class LinuxWindow final : public Window {
  public:
    LinuxWindow(const WindowDescription& description, Windows::ActionHandler onAction,
                const WindowDependencies& dependencies);
    ~LinuxWindow() override;

    void center() override;
    void setIsVisible(bool visible) override;
    void makeKeyAndOrderFront() override;
    void orderOut() override;
    unsigned styleMask() const override { return styleMask_; }
    void setStyleMask(unsigned mask) override;
    std::optional<std::string> text(std::string_view id) const override;
    void setText(std::string_view id, std::string_view text) override;
    void setEnabled(std::string_view id, bool enabled) override;
    void setViewHidden(std::string_view viewId, bool hidden) override;

    /// For tests and pictures.
    QWidget& widget() const;

  private:
    void addView(const View& view, QWidget* content);
    void press(std::string id);
    bool performKeyEquivalent(const QKeyEvent& event);
    void applyStyleMask();
    void focusFirstField();
    ControlWidget& control(std::string_view id);

    struct LaterDeleter {
        void operator()(WindowWidget* widget) const;
    };

    WindowDependencies dependencies_;
    const std::shared_ptr<const Windows::ActionHandler> onAction_;
    unsigned styleMask_;
    std::unique_ptr<WindowWidget, LaterDeleter> widget_;
    std::map<std::string, QWidget*, std::less<>> views_;
    std::vector<std::unique_ptr<ControlWidget>> controls_;
};

}  // namespace vantrel::linuxdesktop
