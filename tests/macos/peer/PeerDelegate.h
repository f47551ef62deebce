#pragma once

#import <AppKit/AppKit.h>

#include <filesystem>

#include "tests/contracts/PeerOptions.h"

/// Opens the windows and decides about the end. Main thread.
@interface PeerDelegate : NSObject <NSApplicationDelegate>

/// The keys are recorded into that file from the moment on that the application is in front.
- (void)recordKeysInto:(const std::filesystem::path&)file;
- (void)setOptions:(const vantrel::peer::PeerOptions&)options;

@end
