#pragma once

#import <AppKit/AppKit.h>

#include <map>
#include <string>

#include "platform/macos/ui/VantrelButtonTarget.h"
#include "platform/ui/Window.h"

namespace vantrel::macos {

/// An NSWindow with its views and controls. An unknown id ends the process. Main thread.
class MacWindow final : public Window {
  public:
    MacWindow(const WindowDescription& description, Windows::ActionHandler onAction);
    ~MacWindow() override;

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
    using ViewsById = std::map<std::string, NSView*, std::less<>>;

    void addView(const View& view);
    static NSView* named(const ViewsById& views, std::string_view id);

    NSWindow* window_;
    VantrelButtonTarget* const target_;
    ViewsById views_;
    ViewsById controls_;
};

}  // namespace vantrel::macos
