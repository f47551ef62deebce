#pragma once

#import <AppKit/AppKit.h>

#include <optional>
#include <string>

#include "platform/ui/Window.h"

/// What a view has to do with the window of the virtual Mac that it hangs in. Until that is made a view keeps what it
/// is told to itself.
@interface NSView (VantrelVirtual)

/// The view hangs in that window from now on, with all below it.
- (void)vantrel_moveToWindow:(nullable NSWindow*)window;
/// The window of the virtual Mac; null as long as the view hangs in none.
- (nullable vantrel::Window*)vantrel_virtualWindow;
- (std::string)vantrel_id;

/// A view of controls as the virtual Mac shows it.
- (vantrel::View)vantrel_viewDescription;
/// Empty for a view that is no control.
- (std::optional<vantrel::Control>)vantrel_controlDescription;
/// The view of that id, at or below this one.
- (nullable NSView*)vantrel_named:(const std::string&)identifier;
/// What the description cannot say, once the window stands.
- (void)vantrel_tellState;

@end
