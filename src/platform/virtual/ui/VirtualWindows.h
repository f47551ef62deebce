#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/ui/Window.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/ui/WindowState.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// The client's windows.
class VirtualWindows final : public Windows {
  public:
    VirtualWindows(Engine& engine, VirtualDesktop& desktop) : engine_(engine), desktop_(desktop) {}

    [[nodiscard]] std::unique_ptr<Window> makeWindow(const WindowDescription& description,
                                                     ActionHandler onAction) override;

    /// Puts the window above those of all applications, whichever is in front.
    void orderFrontRegardless(int number);

    /// Driver-facing, any thread: every window that exists, front to back.
    std::vector<WindowState> all() const;
    /// The visible front window. Empty if there is none.
    std::optional<WindowState> front() const;

    /// The client tells a screen reader that text.
    void announce(std::string text);
    /// Driver-facing, any thread: what a screen reader was told so far, in order.
    std::vector<std::string> announcements() const;

    /// What the participant does. Main thread, in an event.
    void type(int number, std::string_view fieldId, std::string_view text);
    void act(int number, std::string_view controlId);
    void close(int number);

  private:
    class VirtualWindow;
    struct Record {
        WindowState state;
        std::shared_ptr<const ActionHandler> onAction;
    };

    /// Runs `function` on the window's record with the mutex held. False if there is no such window.
    bool with(int number, const std::function<void(Record&)>& function) const;
    void bringToFront(int number);
    void remove(int number);

    Engine& engine_;
    VirtualDesktop& desktop_;
    mutable std::mutex mutex_;
    /// Front to back.
    mutable std::vector<Record> windows_;
    std::vector<std::string> announcements_;
    int made_ = 0;
};

}  // namespace vantrel::virtualmac
