#pragma once

#import <AppKit/NSColor.h>
#import <AppKit/NSFont.h>

#include "platform/ui/Window.h"

@interface NSColor (VantrelValue)
- (double)vantrel_white;
- (vantrel::TextColor)vantrel_meaning;
@end

@interface NSFont (VantrelValue)
- (vantrel::Font)vantrel_font;
@end
