#pragma once

#import <AppKit/AppKit.h>

#include <filesystem>

/// Writes the key code of each press that reaches the application into a file, one a line. Main thread.
@interface PeerApplication : NSApplication

/// From now on.
- (void)recordKeysInto:(const std::filesystem::path&)file;

@end
