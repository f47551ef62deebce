// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <QuartzCore/CALayer.h>
