#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace vantrel::practice {

/// How the page stands in the browser's window; sizes in CSS pixels.
struct PageView {
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    bool fullScreen = false;
    bool visible = false;
    bool focused = false;
};

/// A key that went down over the page; the names are the browser's.
struct PageKey {
    std::string key;
    std::string code;
    bool ctrl = false;
    bool shift = false;
    bool alt = false;
    bool meta = false;
    bool repeat = false;
};

/// How it stood when it was opened.
struct PageOpened : PageView {};

/// What the message field holds after a change.
struct PageText {
    std::string text;
};

/// What was sent from the message field.
struct PageMessage {
    std::string text;
};

/// One thing that a meeting page tells of itself.
struct PageReport {
    /// Counted by the page, from 1.
    std::uint64_t number = 0;
    std::variant<PageOpened, PageView, PageKey, PageText, PageMessage> content;
};

}  // namespace vantrel::practice
