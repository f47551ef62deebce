#include "platform/macos/ui/VantrelMenuTarget.h"

#include <utility>

@implementation VantrelMenuTarget {
    vantrel::Block _block;
}

- (instancetype)initWithBlock:(vantrel::Block)block {
    self = [super init];
    if (self != nil) _block = std::move(block);
    return self;
}

- (void)perform:(id)sender {
    (void)sender;
    // A copy: the block may take its own menu away.
    const vantrel::Block block = _block;
    block();
}

@end
