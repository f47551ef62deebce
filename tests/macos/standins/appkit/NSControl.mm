#import <AppKit/AppKit.h>

#include <string>

#include "tests/macos/standins/appkit/NSView+Virtual.h"
#include "tests/macos/standins/appkit/SendAction.h"
#include "tests/macos/standins/appkit/Values.h"
#include "tests/macos/standins/corefoundation/Rects.h"
#include "tests/macos/standins/foundation/Text.h"

using namespace vantrel::standins;

@interface NSControl (VantrelText)
/// The text that the participant reads: a button's title, any other control's value.
- (NSString*)vantrel_text;
- (void)vantrel_setText:(NSString*)text;
- (vantrel::Control)vantrel_control;
@end

@implementation NSControl {
    NSString* _text;
    BOOL _enabled;
}

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    if (self == nil) return nil;
    _text = @"";
    _enabled = YES;
    self.cell = [[NSCell alloc] init];
    return self;
}

// In a window the virtual Mac has the text, because the participant types there.
- (NSString*)vantrel_text {
    const std::string identifier = [self vantrel_id];
    auto* const window = [self vantrel_virtualWindow];
    if (window == nullptr || identifier.empty()) return _text;
    return textOf(window->text(identifier).value_or(""));
}

- (void)vantrel_setText:(NSString*)text {
    if (text == nil) raise(@"NSInvalidArgumentException", @"a control's text that is nil");
    const std::string identifier = [self vantrel_id];
    // Creates the window if necessary, with the text as it was.
    auto* const window = [self vantrel_virtualWindow];
    _text = [text copy];
    if (window != nullptr && !identifier.empty()) window->setText(identifier, bytesOf(text));
}

- (NSString*)stringValue {
    return [self vantrel_text];
}

- (void)setStringValue:(NSString*)value {
    [self vantrel_setText:value];
}

- (BOOL)isEnabled {
    return _enabled;
}

- (void)setEnabled:(BOOL)enabled {
    const std::string identifier = [self vantrel_id];
    auto* const window = [self vantrel_virtualWindow];
    _enabled = enabled;
    if (window != nullptr && !identifier.empty()) window->setEnabled(identifier, enabled);
}

- (void)vantrel_tellState {
    if (!_enabled) self.enabled = NO;
}

- (void)sizeToFit {
    constexpr CGFloat characterWidth = 7;
    constexpr CGFloat lineHeight = 17;
    NSRect frame = self.frame;
    frame.size = NSMakeSize(characterWidth * static_cast<CGFloat>(self.stringValue.length), lineHeight);
    self.frame = frame;
}

- (void)performClick:(id)sender {
    (void)sender;
    if (_enabled) sendAction(self.action, self.target, self);
}

- (vantrel::Control)vantrel_control {
    vantrel::Control control;
    control.id = [self vantrel_id];
    control.text = bytesOf(_text);
    control.frame = rectOf(self.frame);
    if (self.font != nil) control.font = [self.font vantrel_font];
    return control;
}

@end

@implementation NSTextField {
    bool _isLabel;
    bool _wraps;
}

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    if (self == nil) return nil;
    self.editable = YES;
    self.cell.wraps = YES;
    return self;
}

+ (instancetype)labelWithString:(NSString*)text {
    NSTextField* field = [[self alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
    field.stringValue = text;
    field.editable = NO;
    field->_isLabel = true;
    return field;
}

+ (instancetype)wrappingLabelWithString:(NSString*)text {
    NSTextField* field = [self labelWithString:text];
    field->_wraps = true;
    return field;
}

- (std::optional<vantrel::Control>)vantrel_controlDescription {
    vantrel::Control control = [self vantrel_control];
    control.kind = !_isLabel ? vantrel::Control::Kind::textField
                   : _wraps  ? vantrel::Control::Kind::wrappingLabel
                             : vantrel::Control::Kind::label;
    control.placeholder = bytesOf(self.placeholderString);
    control.accessibilityLabel = bytesOf(self.accessibilityLabel);
    if (self.textColor != nil) control.color = [self.textColor vantrel_meaning];
    return control;
}

@end

@implementation NSButton

+ (instancetype)buttonWithTitle:(NSString*)title target:(id)target action:(SEL)action {
    NSButton* button = [[self alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
    button.title = title;
    button.target = target;
    button.action = action;
    return button;
}

- (NSString*)title {
    return [self vantrel_text];
}

- (void)setTitle:(NSString*)title {
    [self vantrel_setText:title];
}

- (BOOL)performKeyEquivalent:(NSEvent*)event {
    const bool answers = self.enabled && self.keyEquivalent.length > 0 &&
                         [self.keyEquivalent isEqualToString:event.charactersIgnoringModifiers];
    if (!answers) return [super performKeyEquivalent:event];
    [self performClick:nil];
    return YES;
}

// A button's value is its state.
- (NSString*)stringValue {
    return @"0";
}

- (void)setStringValue:(NSString*)value {
    (void)value;
}

- (std::optional<vantrel::Control>)vantrel_controlDescription {
    vantrel::Control control = [self vantrel_control];
    control.kind = vantrel::Control::Kind::button;
    control.keyEquivalent = bytesOf(self.keyEquivalent);
    if (self.action != nullptr) control.action = sel_getName(self.action);
    return control;
}

@end
