#pragma once

#import <AppKit/AppKit.h>

/// Shows the operation-not-allowed cursor all over.
@interface BlackoutContentView : NSView
@end
