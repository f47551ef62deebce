#pragma once

#import <AppKit/AppKit.h>

#include <filesystem>

/// Writes the key code of each press that the application receives into a file, one per line. Main thread.
@interface PeerApplication : NSApplication

/// From now on.
- (void)recordKeysInto:(const std::filesystem::path&)file;

@end
