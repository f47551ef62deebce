#include "platform/macos/ui/ControlBuilder.h"

#include "platform/macos/bridge/RectBridge.h"
#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

namespace {

NSFont* fontOf(const Font& font) {
    return font.bold ? [NSFont boldSystemFontOfSize:font.size] : [NSFont systemFontOfSize:font.size];
}

// Nil means the control's default.
NSColor* colorOf(TextColor color) {
    switch (color) {
        case TextColor::standard:
            return nil;
        case TextColor::secondaryLabel:
            return NSColor.secondaryLabelColor;
        case TextColor::tertiaryLabel:
            return NSColor.tertiaryLabelColor;
        case TextColor::systemRed:
            return NSColor.systemRedColor;
    }
    return nil;
}

NSTextField* label(const Control& control) {
    NSString* text = lenientText(control.text);
    NSTextField* label = control.kind == Control::Kind::wrappingLabel ? [NSTextField wrappingLabelWithString:text]
                                                                      : [NSTextField labelWithString:text];
    if (NSColor* color = colorOf(control.color)) label.textColor = color;
    return label;
}

NSTextField* textField(const Control& control) {
    NSTextField* field = [[NSTextField alloc] initWithFrame:cgRect(control.frame)];
    field.stringValue = lenientText(control.text);
    field.placeholderString = lenientText(control.placeholder);
    if (!control.accessibilityLabel.empty()) field.accessibilityLabel = lenientText(control.accessibilityLabel);
    // A field created in code would wrap a long entry into a second line that nobody sees.
    NSCell* cell = field.cell;
    cell.wraps = NO;
    cell.scrollable = YES;
    return field;
}

NSButton* button(const Control& control, id target, SEL action) {
    NSButton* button = [NSButton buttonWithTitle:lenientText(control.text) target:target action:action];
    button.bezelStyle = NSBezelStyleRounded;
    button.keyEquivalent = lenientText(control.keyEquivalent);
    return button;
}

NSView* separator() {
    NSBox* line = [[NSBox alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
    line.boxType = NSBoxSeparator;
    return line;
}

NSControl* textControl(const Control& control, id target, SEL action) {
    switch (control.kind) {
        case Control::Kind::label:
        case Control::Kind::wrappingLabel:
            return label(control);
        case Control::Kind::textField:
            return textField(control);
        case Control::Kind::button:
            return button(control, target, action);
        case Control::Kind::separator:
            break;
    }
    return nil;
}

}  // namespace

NSView* appKitControl(const Control& control, id target, SEL action) {
    NSControl* withText = textControl(control, target, action);
    if (control.font.size > 0) withText.font = fontOf(control.font);
    NSView* view = withText != nil ? withText : separator();
    view.frame = cgRect(control.frame);
    view.identifier = lenientText(control.id);
    return view;
}

}  // namespace vantrel::macos
