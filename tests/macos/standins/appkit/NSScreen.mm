#import <AppKit/AppKit.h>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/corefoundation/Rects.h"
#include "tests/macos/standins/foundation/Text.h"

using namespace vantrel::standins;

@implementation NSScreen {
    vantrel::Screen _screen;
}

+ (NSScreen*)vantrel_screenOf:(const vantrel::Screen&)screen {
    NSScreen* made = [[NSScreen alloc] init];
    made->_screen = screen;
    return made;
}

+ (NSArray<NSScreen*>*)screens {
    NSMutableArray* screens = [NSMutableArray arrayWithCapacity:1];
    for (const auto& screen : mac().computer().screens.screens()) [screens addObject:[self vantrel_screenOf:screen]];
    return screens;
}

+ (NSScreen*)mainScreen {
    const auto screen = mac().computer().screens.mainScreen();
    return screen ? [self vantrel_screenOf:*screen] : nil;
}

+ (BOOL)screensHaveSeparateSpaces {
    return mac().computer().screens.screensHaveSeparateSpaces();
}

- (NSRect)frame {
    return cgRect(_screen.frame);
}

- (NSString*)localizedName {
    return textOf(_screen.localizedName);
}

@end
