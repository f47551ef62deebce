#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <type_traits>
#include <utility>

namespace vantrel::macos {

/// A CoreFoundation reference that is released once. The caller says what the system's function returned: an object
/// that it created, copied or only lent. Empty for null. Any thread that the object allows.
template <typename Reference>
class [[nodiscard]] CFReference {
    static_assert(std::is_pointer_v<Reference>);

  public:
    CFReference() = default;

    /// From a function with Create in its name: the caller owns the reference.
    static CFReference created(Reference reference) { return CFReference(reference); }
    /// From a function with Copy in its name: the caller owns the reference.
    static CFReference copied(Reference reference) { return CFReference(reference); }
    /// From a function with Get in its name, or a member of a collection: retained here.
    static CFReference borrowed(Reference reference) {
        if (reference != nullptr) CFRetain(reference);
        return CFReference(reference);
    }

    CFReference(const CFReference& other) : CFReference(borrowed(other.reference_)) {}
    CFReference(CFReference&& other) noexcept : reference_(std::exchange(other.reference_, nullptr)) {}
    CFReference& operator=(CFReference other) noexcept {
        std::swap(reference_, other.reference_);
        return *this;
    }
    ~CFReference() {
        if (reference_ != nullptr) CFRelease(reference_);
    }

    Reference get() const { return reference_; }
    explicit operator bool() const { return reference_ != nullptr; }

  private:
    explicit CFReference(Reference owned) : reference_(owned) {}

    Reference reference_ = nullptr;
};

}  // namespace vantrel::macos
