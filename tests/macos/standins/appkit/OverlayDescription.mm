#include "tests/macos/standins/appkit/OverlayDescription.h"

#import <AppKit/AppKit.h>

#include "tests/macos/standins/appkit/NSView+Virtual.h"
#include "tests/macos/standins/appkit/Values.h"
#include "tests/macos/standins/foundation/Text.h"

namespace vantrel::standins {

std::vector<OverlayLabel> overlayLabels(NSView* content) {
    std::vector<OverlayLabel> labels;
    for (NSView* view in content.subviews) {
        if (![view isKindOfClass:[NSTextField class]]) continue;
        NSTextField* field = (NSTextField*)view;
        const NSRect frame = field.frame;
        OverlayLabel label;
        label.text = bytesOf(field.stringValue);
        label.fontSize = [field.font vantrel_font].size;
        label.bold = [field.font vantrel_font].bold;
        label.whiteLevel = [field.textColor vantrel_white];
        label.centreX = frame.origin.x + frame.size.width / 2;
        label.y = frame.origin.y;
        const bool wraps = [field vantrel_controlDescription]->kind == Control::Kind::wrappingLabel;
        if (wraps) label.fixedSize = {frame.size.width, frame.size.height};
        labels.push_back(label);
    }
    return labels;
}

}  // namespace vantrel::standins
