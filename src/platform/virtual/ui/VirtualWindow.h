#pragma once

#include "platform/virtual/ui/VirtualWindows.h"

namespace vantrel::virtualmac {

/// The client's handle of one of its windows.
class VirtualWindows::VirtualWindow final : public Window {
  public:
    VirtualWindow(VirtualWindows& owner, int number) : owner_(owner), number_(number) {}
    ~VirtualWindow() override;
    VirtualWindow(const VirtualWindow&) = delete;
    VirtualWindow& operator=(const VirtualWindow&) = delete;

    void center() override;
    void setIsVisible(bool visible) override;
    void makeKeyAndOrderFront() override;
    void orderOut() override;
    unsigned styleMask() const override;
    void setStyleMask(unsigned mask) override;
    std::optional<std::string> text(std::string_view id) const override;
    void setText(std::string_view id, std::string_view text) override;
    void setEnabled(std::string_view id, bool enabled) override;
    void setViewHidden(std::string_view viewId, bool hidden) override;

  private:
    WindowState state() const;
    void show(bool asKey);
    /// Tells a screen reader what is on the screen now and was not before, or with another text.
    void announceSince(const WindowState& before);
    void hide();

    VirtualWindows& owner_;
    const int number_;
};

}  // namespace vantrel::virtualmac
