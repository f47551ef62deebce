#include "platform/linux/desktop/WindowElement.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

#include "platform/linux/desktop/CloseButtonElement.h"
#include "platform/linux/desktop/FullScreenDesktops.h"
#include "platform/linux/x11/PrimaryOrigin.h"
#include "platform/linux/x11/X11WindowSurvey.h"
#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

namespace {

int withoutMargins(double points, int margins) {
    // The limit of the X protocol.
    constexpr double largest = 32767;
    return std::max(1, static_cast<int>(std::lround(std::min(points, largest))) - margins);
}

}  // namespace

// Window numbers are reused: if the number now belongs to another process, it is another window.
std::optional<X11WindowFacts> WindowElement::facts() const {
    auto facts = dependencies_.survey.of(window_);
    if (facts && facts->owner != owner_) return std::nullopt;
    return facts;
}

std::variant<AccessibilityValue, AccessibilityError> WindowElement::attribute(std::string_view name) const {
    if (name == "AXFullScreen") {
        const auto state = dependencies_.survey.stateOf(window_);
        if (!state || state->owner != owner_) return accessibilityInvalidElement;
        return AccessibilityValue(state->fullScreen);
    }
    const auto window = facts();
    if (!window) return accessibilityInvalidElement;
    if (name == "AXTitle") {
        if (!window->title) return accessibilityNoValue;
        return AccessibilityValue();
    }
    if (name == "AXCloseButton") {
        if (!window->closable) return accessibilityNoValue;
        return AccessibilityValue(std::make_shared<CloseButtonElement>(dependencies_, window_, owner_));
    }
    if (name != "AXPosition" && name != "AXSize") return accessibilityAttributeUnsupported;
    const Rect frame = PrimaryOrigin(dependencies_.connection).toPoints(window->frame);
    if (name == "AXPosition") return AccessibilityValue(frame.origin);
    return AccessibilityValue(frame.size);
}

AccessibilityError WindowElement::setAttribute(std::string_view name, const AccessibilityValue& value) {
    const auto window = facts();
    if (!window) return accessibilityInvalidElement;
    if (name == "AXFullScreen") return setFullScreen(*window, value);
    if (name == "AXPosition") return setPosition(*window, value);
    if (name == "AXSize") return setSize(*window, value);
    return accessibilityAttributeUnsupported;
}

AccessibilityError WindowElement::performAction(std::string_view) {
    return facts() ? accessibilityActionUnsupported : accessibilityInvalidElement;
}

AccessibilityError WindowElement::setFullScreen(const X11WindowFacts& facts, const AccessibilityValue& value) {
    const bool* wanted = std::get_if<bool>(&value);
    if (wanted == nullptr) return accessibilityIllegalArgument;
    if (!*wanted) {
        dependencies_.fullScreen.leave(facts);
        return accessibilitySuccess;
    }
    return dependencies_.fullScreen.enter(facts) ? accessibilitySuccess : accessibilityFailure;
}

// The window manager decides place and size of a maximised window, and gives it other decorations.
X11WindowFacts WindowElement::unmaximized(const X11WindowFacts& facts) {
    constexpr auto longest = std::chrono::milliseconds(200);
    constexpr auto step = std::chrono::milliseconds(2);
    constexpr auto settling = std::chrono::milliseconds(10);
    if (!facts.maximized) return facts;
    dependencies_.windows.unmaximize(window_);
    const auto end = std::chrono::steady_clock::now() + longest;
    X11WindowFacts latest = facts;
    while (latest.maximized && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(step);
        latest = this->facts().value_or(latest);
    }
    // The decorations change after the state.
    std::this_thread::sleep_for(settling);
    return this->facts().value_or(latest);
}

AccessibilityError WindowElement::setPosition(const X11WindowFacts& facts, const AccessibilityValue& value) {
    const auto* point = std::get_if<Point>(&value);
    if (point == nullptr || !std::isfinite(point->x) || !std::isfinite(point->y)) return accessibilityIllegalArgument;
    if (facts.fullScreen) return accessibilitySuccess;
    const X11Rectangle corner = PrimaryOrigin(dependencies_.connection).toPixels(*point);
    const X11Margins shadow = unmaximized(facts).shadow;
    dependencies_.windows.move(window_, corner.x - shadow.left, corner.y - shadow.top);
    return accessibilitySuccess;
}

AccessibilityError WindowElement::setSize(const X11WindowFacts& facts, const AccessibilityValue& value) {
    const auto* size = std::get_if<Size>(&value);
    const bool usable = size != nullptr && std::isfinite(size->width) && std::isfinite(size->height) &&
                        size->width >= 0 && size->height >= 0;
    if (!usable) return accessibilityIllegalArgument;
    if (facts.fullScreen) return accessibilitySuccess;
    const X11Margins margins = unmaximized(facts).margins;
    dependencies_.windows.resize(window_, withoutMargins(size->width, margins.left + margins.right),
                                 withoutMargins(size->height, margins.top + margins.bottom));
    return accessibilitySuccess;
}

}  // namespace vantrel::linuxdesktop
