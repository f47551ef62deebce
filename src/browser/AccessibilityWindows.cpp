#include "browser/AccessibilityWindows.h"

#include <variant>

namespace vantrel {
namespace {

constexpr std::string_view windowsAttribute = "AXWindows";
constexpr std::string_view focusedWindowAttribute = "AXFocusedWindow";
constexpr std::string_view fullscreenAttribute = "AXFullScreen";
constexpr std::string_view positionAttribute = "AXPosition";
constexpr std::string_view sizeAttribute = "AXSize";
constexpr std::string_view closeButtonAttribute = "AXCloseButton";
constexpr std::string_view pressAction = "AXPress";

template <typename Value>
std::optional<Value> read(const AccessibilityElement& element, std::string_view attribute) {
    const auto answer = element.attribute(attribute);
    const auto* value = std::get_if<AccessibilityValue>(&answer);
    const auto* wanted = value ? std::get_if<Value>(value) : nullptr;
    if (!wanted) return std::nullopt;
    return *wanted;
}

}  // namespace

std::vector<std::shared_ptr<AccessibilityElement>> accessibilityWindows(const Accessibility& accessibility,
                                                                        ProcessIdentifier process) {
    using Elements = std::vector<std::shared_ptr<AccessibilityElement>>;
    return read<Elements>(*accessibility.application(process), windowsAttribute).value_or(Elements());
}

std::optional<bool> isFullscreen(const AccessibilityElement& window) {
    return read<bool>(window, fullscreenAttribute);
}

AccessibilityError setFullscreen(AccessibilityElement& window, bool fullscreen) {
    return window.setAttribute(fullscreenAttribute, fullscreen);
}

std::shared_ptr<AccessibilityElement> accessibilityFocusedWindow(const Accessibility& accessibility,
                                                                 ProcessIdentifier process) {
    return read<std::shared_ptr<AccessibilityElement>>(*accessibility.application(process), focusedWindowAttribute)
        .value_or(nullptr);
}

Rect accessibilityFrame(const AccessibilityElement& window) {
    return {read<Point>(window, positionAttribute).value_or(Point()),
            read<Size>(window, sizeAttribute).value_or(Size())};
}

void setFrame(AccessibilityElement& window, const Rect& frame) {
    window.setAttribute(positionAttribute, frame.origin);
    window.setAttribute(sizeAttribute, frame.size);
}

void pressCloseButton(const AccessibilityElement& window) {
    const auto button = read<std::shared_ptr<AccessibilityElement>>(window, closeButtonAttribute);
    if (button) (*button)->performAction(pressAction);
}

}  // namespace vantrel
