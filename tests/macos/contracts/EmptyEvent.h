#pragma once

#import <AppKit/AppKit.h>

namespace vantrel::macos {

/// An event without meaning. Main thread.
NSEvent* emptyEvent();

}  // namespace vantrel::macos
