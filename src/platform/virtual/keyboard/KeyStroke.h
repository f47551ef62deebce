#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel::virtualmac {

/// A key and the modifiers held with it, by macOS key code (a position) and CGEventFlags. Its text is that of an
/// American keyboard, such as "cmd+shift+4", "ctrl+left" or "code-70" for a key without a name.
struct KeyStroke {
    static constexpr std::uint64_t shift = 0x20000;
    static constexpr std::uint64_t control = 0x40000;
    static constexpr std::uint64_t option = 0x80000;
    static constexpr std::uint64_t command = 0x100000;

    std::int64_t keyCode = 0;
    std::uint64_t flags = 0;

    bool operator==(const KeyStroke&) const = default;

    /// Modifiers (cmd, ctrl, alt, shift) in any order, each at most once, then the key. Empty if the text names none.
    static std::optional<KeyStroke> parse(std::string_view text);
    std::string text() const;
    /// The key's letter, or 0.
    char letter() const;
};

}  // namespace vantrel::virtualmac
