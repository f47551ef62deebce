#pragma once

#import <AppKit/AppKit.h>

#include <optional>
#include <string>

#include "platform/ui/Window.h"

/// The connection of a view to its window on the virtual Mac. Until that window is created, the view keeps its own
/// state.
@interface NSView (VantrelVirtual)

/// From now on the view, with all its subviews, is in that window.
- (void)vantrel_moveToWindow:(nullable NSWindow*)window;
/// The window on the virtual Mac. Null while the view is in none.
- (nullable vantrel::Window*)vantrel_virtualWindow;
- (std::string)vantrel_id;

/// A view of controls as the virtual Mac shows it.
- (vantrel::View)vantrel_viewDescription;
/// Empty for a view that is not a control.
- (std::optional<vantrel::Control>)vantrel_controlDescription;
/// The view with that id: this one or one below it.
- (nullable NSView*)vantrel_named:(const std::string&)identifier;
/// Sets what the description cannot contain, once the window exists.
- (void)vantrel_tellState;

@end
