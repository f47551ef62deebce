#include "platform/macos/desktop/MacScreens.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/macos/bridge/NotificationObservation.h"
#include "platform/macos/bridge/RectBridge.h"
#include "platform/macos/bridge/Text.h"
#include "platform/macos/threads/MainThread.h"

namespace vantrel::macos {

namespace {

Screen screenOf(NSScreen* screen) {
    return {bytesOf(screen.localizedName), rectOf(screen.frame)};
}

}  // namespace

std::vector<Screen> MacScreens::screens() const {
    requireMainThread("screens");
    std::vector<Screen> screens;
    for (NSScreen* screen in NSScreen.screens) screens.push_back(screenOf(screen));
    return screens;
}

std::optional<Screen> MacScreens::mainScreen() const {
    requireMainThread("mainScreen");
    NSScreen* screen = NSScreen.mainScreen;
    if (screen == nil) return std::nullopt;
    return screenOf(screen);
}

bool MacScreens::screensHaveSeparateSpaces() const {
    requireMainThread("screensHaveSeparateSpaces");
    return NSScreen.screensHaveSeparateSpaces;
}

std::unique_ptr<Observation> MacScreens::observeScreenParametersDidChange(Block block) {
    requireMainThread("observeScreenParametersDidChange");
    return std::make_unique<NotificationObservation>(
        NSNotificationCenter.defaultCenter, NSApplicationDidChangeScreenParametersNotification, std::move(block));
}

}  // namespace vantrel::macos
