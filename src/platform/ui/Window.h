#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop/Geometry.h"

namespace vantrel {

/// NSWindowStyleMask bits.
enum WindowStyle : unsigned { windowTitled = 1, windowClosable = 2, windowMiniaturizable = 4 };

/// NSAutoresizingMask bits.
enum Autoresizing : unsigned { viewWidthSizable = 2, viewHeightSizable = 16 };

/// A system font in points. Size 0 is the control's default.
struct Font {
    double size = 0;
    bool bold = false;
    bool operator==(const Font&) const = default;
};

/// System colours (NSColor) that follow the user's appearance.
enum class TextColor { standard, secondaryLabel, tertiaryLabel, systemRed };

/// One control of a view. Frames are in points from the view's bottom left.
struct Control {
    /// label: NSTextField labelWithString:; wrappingLabel: wrappingLabelWithString:; textField: plain and editable;
    /// separator: NSBox; button: NSButton with the rounded bezel.
    enum class Kind { label, wrappingLabel, textField, separator, button };

    Kind kind = Kind::label;
    /// Unique in its window. Empty for a control that is never looked up.
    std::string id;
    std::string text;
    std::string placeholder;
    Font font;
    TextColor color = TextColor::standard;
    Rect frame;
    /// A button's key equivalent without modifiers, "\r" for Return. Empty for none.
    std::string keyEquivalent;
    /// A button's selector, for readers of this table. Buttons report their id.
    std::string action;
    /// What a screen reader calls a text field (accessibilityLabel).
    std::string accessibilityLabel;
    /// A label that says how things stand. A screen reader is told its text when it changes on the screen, and when it
    /// comes on the screen (NSAccessibilityAnnouncementRequestedNotification). An empty text is not told.
    bool announced = false;
};

/// NSView with its controls, in the order in which they were added. Tab goes through fields and buttons in this order,
/// from view to view, past what is hidden (nextKeyView).
struct View {
    std::string id;
    Rect frame;
    unsigned autoresizingMask = 0;
    bool hidden = false;
    std::vector<Control> controls;
};

/// What a window is made of (initWithContentRect:styleMask:backing:defer:, buffered, not deferred).
struct WindowDescription {
    Rect contentRect;
    unsigned styleMask = 0;
    std::string title;
    bool releasedWhenClosed = false;
    std::vector<View> views;
};

/// NSWindow. Main thread. Destroying it takes it off the screen; a press of a button that is under way then tells
/// nobody. An unknown id is a programming error, except where noted.
class Window {
  public:
    virtual ~Window() = default;

    virtual void center() = 0;
    virtual void setIsVisible(bool visible) = 0;
    virtual void makeKeyAndOrderFront() = 0;
    virtual void orderOut() = 0;

    virtual unsigned styleMask() const = 0;
    virtual void setStyleMask(unsigned mask) = 0;

    /// stringValue of a control. Empty optional if no control has the id.
    virtual std::optional<std::string> text(std::string_view id) const = 0;
    virtual void setText(std::string_view id, std::string_view text) = 0;
    virtual void setEnabled(std::string_view id, bool enabled) = 0;
    virtual void setViewHidden(std::string_view viewId, bool hidden) = 0;
};

/// Creates windows. Main thread.
class Windows {
  public:
    virtual ~Windows() = default;

    /// Called with the id of a button that was pressed. Main thread, in an event.
    using ActionHandler = std::function<void(std::string_view id)>;

    [[nodiscard]] virtual std::unique_ptr<Window> makeWindow(const WindowDescription& description,
                                                             ActionHandler onAction) = 0;
};

}  // namespace vantrel
