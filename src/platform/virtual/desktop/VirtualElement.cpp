#include "platform/virtual/desktop/VirtualElement.h"

#include <utility>

#include "platform/virtual/scheduler/NumberText.h"

namespace vantrel::virtualmac {

namespace {

std::string describe(const AccessibilityValue& value) {
    if (const auto* boolean = std::get_if<bool>(&value)) return *boolean ? "true" : "false";
    if (const auto* point = std::get_if<Point>(&value)) return shortest(point->x) + " " + shortest(point->y);
    if (const auto* size = std::get_if<Size>(&value)) return shortest(size->width) + " " + shortest(size->height);
    return "?";
}

}  // namespace

std::variant<AccessibilityValue, AccessibilityError> VirtualAccessibility::Element::attribute(
    std::string_view name) const {
    if (isInPause()) return accessibilityCannotComplete;
    Answer answer = ask(name);
    const auto* error = std::get_if<AccessibilityError>(&answer);
    if (error != nullptr && *error == accessibilityCannotComplete && owner_.insists_) answer = ask(name);
    return answer;
}

AccessibilityFaults::Answer VirtualAccessibility::Element::ask(std::string_view name) const {
    const AccessibilityError reached = owner_.reach(process_);
    Answer answer = reached;
    if (reached == accessibilitySuccess) {
        auto fault = owner_.faults_.strike(AccessibilityFaults::Operation::read, name, process_);
        answer = fault ? std::move(*fault) : read(name);
    }
    if (const Block block = owner_.faults_.takeAfterRead(name, process_)) block();
    const auto* error = std::get_if<AccessibilityError>(&answer);
    if (error != nullptr && *error == accessibilityDisabled) owner_.onDenied();
    return answer;
}

bool VirtualAccessibility::Element::isInPause() const {
    return owner_.pauses_ && owner_.unanswered_.refuses(process_, toSeconds(owner_.engine_.scheduler.now()));
}

template <class Function>
AccessibilityError VirtualAccessibility::Element::carryOut(AccessibilityFaults::Operation operation,
                                                           std::string_view name, Fields fields, Function intent) {
    if (owner_.engine_.isOver() || isInPause()) return accessibilityCannotComplete;
    Intent intended = AccessibilityError(owner_.reach(process_));
    if (std::get<AccessibilityError>(intended) == accessibilitySuccess) {
        const auto fault = owner_.faults_.strike(operation, name, process_);
        intended = fault ? Intent(std::get<AccessibilityError>(*fault)) : intent();
    }
    Fields all{{Field::pid, std::to_string(process_)}};
    if (window_ != 0) all.emplace_back(Field::window, std::to_string(window_));
    for (auto& field : fields) all.push_back(std::move(field));
    const auto* error = std::get_if<AccessibilityError>(&intended);
    if (error != nullptr && *error != accessibilitySuccess) all.emplace_back(Field::error, std::to_string(*error));
    const bool isWrite = operation == AccessibilityFaults::Operation::write;
    owner_.engine_.journal.emit(
        {isWrite ? ElementEvent::set : ElementEvent::action, std::string(name), std::move(all)});
    if (error != nullptr && *error == accessibilityDisabled) owner_.onDenied();
    if (error != nullptr) return *error;
    std::get<Block>(intended)();
    return accessibilitySuccess;
}

AccessibilityError VirtualAccessibility::Element::setAttribute(std::string_view name, const AccessibilityValue& value) {
    return carryOut(AccessibilityFaults::Operation::write, name, {{Field::value, describe(value)}},
                    [&] { return write(name, value); });
}

AccessibilityError VirtualAccessibility::Element::performAction(std::string_view name) {
    return carryOut(AccessibilityFaults::Operation::action, name, {}, [&] { return perform(name); });
}

VirtualAccessibility::Element::Intent VirtualAccessibility::Element::write(std::string_view,
                                                                           const AccessibilityValue&) const {
    return accessibilityAttributeUnsupported;
}

VirtualAccessibility::Element::Intent VirtualAccessibility::Element::perform(std::string_view) const {
    return accessibilityActionUnsupported;
}

AccessibilityFaults::Answer VirtualAccessibility::ApplicationElement::read(std::string_view name) const {
    if (name == "AXWindows") {
        std::vector<std::shared_ptr<AccessibilityElement>> elements;
        for (const AppWindow& window : owner_.desktop_.windowsOf(process_)) {
            elements.push_back(std::make_shared<WindowElement>(owner_, process_, window.number));
        }
        return AccessibilityValue(std::move(elements));
    }
    if (name == "AXFrontmost") return AccessibilityValue(owner_.desktop_.isFrontmost(process_));
    if (name != "AXFocusedWindow") return accessibilityAttributeUnsupported;
    const auto number = owner_.desktop_.read([this](const DesktopState& state) {
        const AppWindow* window = state.frontWindow(process_);
        return window == nullptr ? 0 : window->number;
    });
    if (number == 0) return accessibilityNoValue;
    return AccessibilityValue(
        std::shared_ptr<AccessibilityElement>(std::make_shared<WindowElement>(owner_, process_, number)));
}

VirtualAccessibility::Element::Intent VirtualAccessibility::ApplicationElement::write(
    std::string_view name, const AccessibilityValue& value) const {
    if (name != "AXFrontmost") return accessibilityAttributeUnsupported;
    const auto* frontmost = std::get_if<bool>(&value);
    if (frontmost == nullptr) return accessibilityIllegalArgument;
    return [process = owner_.processes_.find(process_), frontmost = *frontmost] {
        if (frontmost) process->becomeFrontmost();
    };
}

AccessibilityFaults::Answer VirtualAccessibility::WindowElement::read(std::string_view name) const {
    const auto window = owner_.desktop_.window(window_);
    if (!window) return accessibilityInvalidElement;
    if (name == "AXFullScreen") return AccessibilityValue(window->fullScreen);
    if (name == "AXMinimized") return AccessibilityValue(window->minimised);
    if (name == "AXPosition") return AccessibilityValue(window->frame.origin);
    if (name == "AXSize") return AccessibilityValue(window->frame.size);
    if (name == "AXTitle") return AccessibilityValue();
    if (name != "AXCloseButton") return accessibilityAttributeUnsupported;
    if (!window->hasCloseButton) return accessibilityNoValue;
    return AccessibilityValue(
        std::shared_ptr<AccessibilityElement>(std::make_shared<CloseButtonElement>(owner_, process_, window_)));
}

VirtualAccessibility::Element::Intent VirtualAccessibility::WindowElement::write(
    std::string_view name, const AccessibilityValue& value) const {
    VirtualDesktop& desktop = owner_.desktop_;
    const std::int64_t number = window_;
    if (!desktop.window(number)) return accessibilityInvalidElement;
    if (name == "AXFullScreen" || name == "AXMinimized") {
        const auto* on = std::get_if<bool>(&value);
        if (on == nullptr) return accessibilityIllegalArgument;
        if (name == "AXMinimized") return [&desktop, number, on = *on] { desktop.setMinimised(number, on); };
        return [&desktop, number, on = *on] { desktop.setFullScreen(number, on); };
    }
    if (name == "AXPosition") {
        const auto* origin = std::get_if<Point>(&value);
        if (origin == nullptr) return accessibilityIllegalArgument;
        return [&desktop, number, origin = *origin] { desktop.move(number, origin); };
    }
    if (name != "AXSize") return accessibilityAttributeUnsupported;
    const auto* size = std::get_if<Size>(&value);
    if (size == nullptr || size->width < 0 || size->height < 0) return accessibilityIllegalArgument;
    return [&desktop, number, size = *size] { desktop.resize(number, size); };
}

AccessibilityFaults::Answer VirtualAccessibility::CloseButtonElement::read(std::string_view) const {
    return owner_.desktop_.window(window_) ? accessibilityAttributeUnsupported : accessibilityInvalidElement;
}

VirtualAccessibility::Element::Intent VirtualAccessibility::CloseButtonElement::perform(std::string_view name) const {
    const auto window = owner_.desktop_.window(window_);
    if (!window) return accessibilityInvalidElement;
    if (name != "AXPress") return accessibilityActionUnsupported;
    if (window->refusesToClose) return accessibilitySuccess;
    return [&desktop = owner_.desktop_, number = window_] { desktop.close(number); };
}

}  // namespace vantrel::virtualmac
