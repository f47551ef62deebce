#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace vantrel::practice {

/// The page's state in the browser's window. Sizes are in CSS pixels.
struct PageView {
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    bool fullScreen = false;
    bool visible = false;
    bool focused = false;
};

/// A key pressed over the page. The names are the browser's.
struct PageKey {
    std::string key;
    std::string code;
    bool ctrl = false;
    bool shift = false;
    bool alt = false;
    bool meta = false;
    bool repeat = false;
};

/// The state when it was opened.
struct PageOpened : PageView {};

/// The message field's text after a change.
struct PageText {
    std::string text;
};

/// A message sent from the field.
struct PageMessage {
    std::string text;
};

/// What became of the page's request for its camera or microphone.
struct PageDevice {
    /// `camera` or `microphone`.
    std::string device;
    /// `granted`, `live`, `refused`, `missing`, `failed` or `ended`.
    std::string state;
    /// The device's name, or the browser's error.
    std::string detail;
};

/// One report of a meeting page about itself.
struct PageReport {
    /// Counted by the page, from 1.
    std::uint64_t number = 0;
    std::variant<PageOpened, PageView, PageKey, PageText, PageMessage, PageDevice> content;
};

}  // namespace vantrel::practice
