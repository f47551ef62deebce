#pragma once

#import <AppKit/AppKit.h>

#include <filesystem>

#include "tests/contracts/PeerOptions.h"

/// Opens the windows and decides when to end. Main thread.
@interface PeerDelegate : NSObject <NSApplicationDelegate>

/// Records the keys into that file as soon as the application is in front.
- (void)recordKeysInto:(const std::filesystem::path&)file;
- (void)setOptions:(const vantrel::peer::PeerOptions&)options;

@end
