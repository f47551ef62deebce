#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "platform/threads/Block.h"
#include "platform/virtual/desktop/VirtualAccessibility.h"

namespace vantrel::virtualmac {

/// What the elements share: reaching the process, faults, events.
class VirtualAccessibility::Element : public AccessibilityElement {
  public:
    Element(const VirtualAccessibility& owner, ProcessIdentifier process, std::int64_t window)
        : owner_(owner), process_(process), window_(window) {}

    std::variant<AccessibilityValue, AccessibilityError> attribute(std::string_view name) const final;
    AccessibilityError setAttribute(std::string_view name, const AccessibilityValue& value) final;
    AccessibilityError performAction(std::string_view name) final;

  protected:
    using Answer = AccessibilityFaults::Answer;
    /// What a write or an action will do, or its error.
    using Intent = std::variant<Block, AccessibilityError>;

    virtual Answer read(std::string_view name) const = 0;
    virtual Intent write(std::string_view name, const AccessibilityValue& value) const;
    virtual Intent perform(std::string_view name) const;

    const VirtualAccessibility& owner_;
    const ProcessIdentifier process_;
    /// 0 for an application.
    const std::int64_t window_;

  private:
    /// Whether a call must fail at once: the client does not make it.
    bool isInPause() const;
    /// Asks for the value once.
    Answer ask(std::string_view name) const;
    /// Records the write or the action and then performs it.
    template <class Function>
    AccessibilityError carryOut(AccessibilityFaults::Operation operation, std::string_view name, Fields fields,
                                Function intent);
};

class VirtualAccessibility::ApplicationElement final : public Element {
  public:
    ApplicationElement(const VirtualAccessibility& owner, ProcessIdentifier process) : Element(owner, process, 0) {}

  private:
    Answer read(std::string_view name) const override;
    Intent write(std::string_view name, const AccessibilityValue& value) const override;
};

class VirtualAccessibility::WindowElement final : public Element {
  public:
    using Element::Element;

  private:
    Answer read(std::string_view name) const override;
    Intent write(std::string_view name, const AccessibilityValue& value) const override;
};

class VirtualAccessibility::CloseButtonElement final : public Element {
  public:
    using Element::Element;

  private:
    Answer read(std::string_view name) const override;
    Intent perform(std::string_view name) const override;
};

}  // namespace vantrel::virtualmac
