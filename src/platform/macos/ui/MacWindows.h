#pragma once

#import <AppKit/AppKit.h>

#include <map>
#include <string>
#include <vector>

#include "platform/macos/ui/StatusAnnouncer.h"
#include "platform/ui/Window.h"

/// The target of a window's buttons. It tells the handler which one was pressed. Main thread.
@interface VantrelButtonTarget : NSObject

- (instancetype)initWithHandler:(vantrel::Windows::ActionHandler)handler;
- (void)buttonPressed:(NSView*)sender;
/// From here on the handler is no longer called.
- (void)forget;

@end

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

    void addView(const View& view, std::vector<NSView*>& forTab);
    void linkForTab(const std::vector<NSView*>& views);
    static NSView* named(const ViewsById& views, std::string_view id);

    NSWindow* window_;
    VantrelButtonTarget* const target_;
    ViewsById views_;
    ViewsById controls_;
    StatusAnnouncer statuses_;
};

class MacWindows final : public Windows {
  public:
    [[nodiscard]] std::unique_ptr<Window> makeWindow(const WindowDescription& description,
                                                     ActionHandler onAction) override;
};

}  // namespace vantrel::macos
