#include "tests/macos/peer/PeerApplication.h"

#include <fstream>

@implementation PeerApplication {
    std::ofstream _keys;
}

- (void)recordKeysInto:(const std::filesystem::path&)file {
    if (!_keys.is_open()) _keys.open(file);
}

- (void)sendEvent:(NSEvent*)event {
    if (_keys.is_open() && event.type == NSEventTypeKeyDown) {
        _keys << event.keyCode << std::endl;
        return;
    }
    [super sendEvent:event];
}

@end
