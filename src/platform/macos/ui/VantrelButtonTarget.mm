#include "platform/macos/ui/VantrelButtonTarget.h"

#include <string>
#include <utility>

#include "platform/macos/bridge/Text.h"

@implementation VantrelButtonTarget {
    vantrel::Windows::ActionHandler _handler;
}

- (instancetype)initWithHandler:(vantrel::Windows::ActionHandler)handler {
    self = [super init];
    if (self != nil) _handler = std::move(handler);
    return self;
}

- (void)buttonPressed:(NSView*)sender {
    // Copies: the handler may destroy the window, and with it all that is here.
    const vantrel::Windows::ActionHandler handler = _handler;
    const std::string pressed = vantrel::macos::bytesOf(sender.identifier);
    if (handler) handler(pressed);
}

- (void)forget {
    _handler = nullptr;
}

@end
