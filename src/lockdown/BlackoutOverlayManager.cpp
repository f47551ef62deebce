#include "lockdown/BlackoutOverlayManager.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "lockdown/RectangleText.h"

namespace vantrel {
namespace {

constexpr double frameTolerance = 1.0;

bool agrees(double a, double b) {
    return std::abs(a - b) < frameTolerance;
}

bool agrees(const Rect& a, const Rect& b) {
    return agrees(a.origin.x, b.origin.x) && agrees(a.origin.y, b.origin.y) && agrees(a.size.width, b.size.width) &&
           agrees(a.size.height, b.size.height);
}

Rect frameOf(const std::optional<Screen>& screen) {
    return screen ? screen->frame : Rect();
}

}  // namespace

void BlackoutOverlayManager::activate(const std::optional<Screen>& excludedScreen) {
    if (isActive_) return;
    if (!screens_.screensHaveSeparateSpaces()) {
        print("[BLACKOUT] Modalità 'shared spaces' attiva — overlay non necessario");
        isActive_ = true;
        return;
    }
    excludedScreenFrame_ = frameOf(excludedScreen);
    createOverlays(excludedScreen);
    enforceTimer_ = mainRunLoop_.scheduledTimer(enforceInterval, true, [weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->enforce();
    });
    screenChangeObserver_ = screens_.observeScreenParametersDidChange([weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->handleScreenChange();
    });
    isActive_ = true;
    print("[BLACKOUT] Attivato — escluso: " + (excludedScreen ? excludedScreen->localizedName : "?") +
          ", coperti: " + std::to_string(windows_.size()));
}

void BlackoutOverlayManager::deactivate() {
    if (!isActive_) return;
    isActive_ = false;
    enforceTimer_.reset();
    screenChangeObserver_.reset();
    closeOverlays();
    print("[BLACKOUT] Overlay deattivato");
}

void BlackoutOverlayManager::createOverlays(const std::optional<Screen>& excludedScreen) {
    for (const auto& screen : screens_.screens()) {
        if (excludedScreen && agrees(screen.frame, excludedScreen->frame)) continue;
        windows_.emplace_back(overlays_, screen);
        print("[BLACKOUT] Coperto monitor " + screen.localizedName + " " + rectangleText(screen.frame));
    }
    if (windows_.empty()) print("[BLACKOUT] Nessun monitor secondario — sistema single-monitor");
}

void BlackoutOverlayManager::closeOverlays() {
    for (auto& window : windows_) window.close();
    windows_.clear();
}

void BlackoutOverlayManager::enforce() {
    for (auto& window : windows_) window.enforce();
}

void BlackoutOverlayManager::handleScreenChange() {
    print("[BLACKOUT] Cambio configurazione display — ricreo overlay");
    const auto screens = screens_.screens();
    const auto same = std::find_if(screens.begin(), screens.end(),
                                   [this](const Screen& screen) { return agrees(screen.frame, excludedScreenFrame_); });
    const auto excluded = same != screens.end() ? std::optional(*same) : screens_.mainScreen();
    excludedScreenFrame_ = frameOf(excluded);
    closeOverlays();
    createOverlays(excluded);
}

}  // namespace vantrel
