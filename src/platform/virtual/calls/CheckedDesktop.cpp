#include "platform/virtual/calls/CheckedDesktop.h"

#include <string_view>
#include <utility>
#include <variant>

namespace vantrel::virtualmac {

namespace {

using ElementPointer = std::shared_ptr<AccessibilityElement>;

class CheckedElement final : public AccessibilityElement {
  public:
    CheckedElement(Engine& engine, ElementPointer element) : engine_(engine), element_(std::move(element)) {}

    std::variant<AccessibilityValue, AccessibilityError> attribute(std::string_view name) const override {
        engine_.platformCall();
        auto answer = element_->attribute(name);
        if (auto* value = std::get_if<AccessibilityValue>(&answer)) {
            forEachElement(*value, [this](ElementPointer& element) {
                if (element) element = std::make_shared<CheckedElement>(engine_, std::move(element));
            });
        }
        return answer;
    }

    AccessibilityError setAttribute(std::string_view name, const AccessibilityValue& value) override {
        engine_.platformCall();
        // A computer knows its own elements only.
        AccessibilityValue original = value;
        forEachElement(original, [](ElementPointer& element) {
            if (const auto checked = std::dynamic_pointer_cast<CheckedElement>(element)) element = checked->element_;
        });
        return element_->setAttribute(name, original);
    }

    AccessibilityError performAction(std::string_view name) override {
        engine_.platformCall();
        return element_->performAction(name);
    }

  private:
    template <class Function>
    static void forEachElement(AccessibilityValue& value, Function function) {
        if (auto* element = std::get_if<ElementPointer>(&value)) function(*element);
        if (auto* elements = std::get_if<std::vector<ElementPointer>>(&value)) {
            for (auto& element : *elements) function(element);
        }
    }

    Engine& engine_;
    ElementPointer element_;
};

}  // namespace

std::vector<Screen> CheckedScreens::screens() const {
    engine_.mainThreadCall("Screens.screens");
    return screens_.screens();
}

std::optional<Screen> CheckedScreens::mainScreen() const {
    engine_.mainThreadCall("Screens.mainScreen");
    return screens_.mainScreen();
}

bool CheckedScreens::screensHaveSeparateSpaces() const {
    engine_.mainThreadCall("Screens.screensHaveSeparateSpaces");
    return screens_.screensHaveSeparateSpaces();
}

std::unique_ptr<Observation> CheckedScreens::observeScreenParametersDidChange(Block block) {
    engine_.mainThreadCall("Screens.observeScreenParametersDidChange");
    return screens_.observeScreenParametersDidChange(std::move(block));
}

std::unique_ptr<Observation> CheckedSpaces::observeActiveSpaceDidChange(Block block) {
    engine_.mainThreadCall("Spaces.observeActiveSpaceDidChange");
    return spaces_.observeActiveSpaceDidChange(std::move(block));
}

std::optional<std::vector<WindowEntry>> CheckedWindowList::copy(WindowListOption option) const {
    engine_.platformCall();
    return list_.copy(option);
}

std::shared_ptr<AccessibilityElement> CheckedAccessibility::application(ProcessIdentifier process) const {
    engine_.platformCall();
    auto element = accessibility_.application(process);
    if (!element) return nullptr;
    return std::make_shared<CheckedElement>(engine_, std::move(element));
}

std::unique_ptr<AccessibilityTimeLimit> CheckedAccessibility::limitTime() {
    engine_.mainThreadCall("Accessibility.limitTime");
    return accessibility_.limitTime();
}

}  // namespace vantrel::virtualmac
