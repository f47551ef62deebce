#include "tests/macos/contracts/MacPermissions.h"

#import <ApplicationServices/ApplicationServices.h>

#include <cstdio>

#include "platform/macos/system/MacAccessibilityTrust.h"

namespace vantrel::macos {

namespace {

constexpr auto accessibility = "the Accessibility permission, which a person grants in the system's settings";
constexpr auto screenRecording = "the screen recording permission, which a person grants in the system's settings";

}  // namespace

void MacPermissions::ask() {
    if (!MacAccessibilityTrust().isProcessTrustedWithPrompt())
        std::printf("contracts-macos: lacks %s\n", accessibility);
    // Needed for the titles of other applications' windows.
    if (!CGRequestScreenCaptureAccess()) std::printf("contracts-macos: lacks %s\n", screenRecording);
}

std::optional<std::string> MacPermissions::missingFor(const std::string& suite) {
    const bool usesWindows = suite == "WindowContract";
    const bool usesKeys = suite == "KeyboardContract" || suite == "LostTapContract" || suite == "MacTaps";
    if ((usesWindows || usesKeys) && !AXIsProcessTrusted()) return suite + " needs " + accessibility;
    if (usesWindows && !CGPreflightScreenCaptureAccess()) return suite + " needs " + screenRecording;
    return std::nullopt;
}

std::optional<std::string> MacPermissions::declinedActivation() {
    if (@available(macOS 14, *)) {
        return "macOS 14 and later may leave the application in front where it is, whoever asks; nothing grants it";
    }
    return std::nullopt;
}

std::string MacPermissions::declinedAlerts() {
    return "AppKit makes an alert's panel itself and may not take its style; a display that sleeps or is locked shows "
           "it to nobody; nothing grants either";
}

}  // namespace vantrel::macos
