#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/desktop/Geometry.h"
#include "platform/threads/Block.h"
#include "platform/threads/Observation.h"

namespace vantrel {

/// NSScreen. The frame counts from the bottom left of the primary display. The name is UTF-8, with U+FFFD for each byte
/// of the system's that is not.
struct Screen {
    std::string localizedName;
    Rect frame;
    bool operator==(const Screen&) const = default;
};

/// The displays. Main thread.
class Screens {
  public:
    virtual ~Screens() = default;

    /// The primary display first.
    virtual std::vector<Screen> screens() const = 0;

    /// The screen with the keyboard focus. Empty if there is no display.
    virtual std::optional<Screen> mainScreen() const = 0;

    /// +[NSScreen screensHaveSeparateSpaces].
    virtual bool screensHaveSeparateSpaces() const = 0;

    /// NSApplicationDidChangeScreenParametersNotification on the main operation queue.
    [[nodiscard]] virtual std::unique_ptr<Observation> observeScreenParametersDidChange(Block block) = 0;
};

}  // namespace vantrel
