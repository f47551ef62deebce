#pragma once

#import <AppKit/AppKit.h>

namespace vantrel::macos {

/// An event that means nothing to anybody. Main thread.
NSEvent* emptyEvent();

}  // namespace vantrel::macos
