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
    requireMain("+[NSScreen screens]");
    NSMutableArray* screens = [NSMutableArray arrayWithCapacity:1];
    for (const auto& screen : mac().parts().screens.screens()) [screens addObject:[self vantrel_screenOf:screen]];
    return screens;
}

+ (NSScreen*)mainScreen {
    requireMain("+[NSScreen mainScreen]");
    const auto screen = mac().parts().screens.mainScreen();
    return screen ? [self vantrel_screenOf:*screen] : nil;
}

+ (BOOL)screensHaveSeparateSpaces {
    requireMain("screensHaveSeparateSpaces");
    return mac().parts().screens.screensHaveSeparateSpaces();
}

- (NSRect)frame {
    return cgRect(_screen.frame);
}

- (NSString*)localizedName {
    return textOf(_screen.localizedName);
}

@end
