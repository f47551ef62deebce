#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/apps/ProcessLauncher.h"
#include "platform/desktop/Geometry.h"

namespace vantrel {

/// One entry of the system's window list (kCGWindow… keys). Every key can be missing: a title without the
/// screen-recording permission, the on-screen flag when false. Bounds count from the top left of the primary display.
/// Texts are UTF-8, with U+FFFD for each byte of the system's that is not.
struct WindowEntry {
    std::optional<std::int64_t> number;
    std::optional<ProcessIdentifier> ownerPID;
    std::optional<std::string> ownerName;
    std::optional<std::string> name;
    std::optional<std::int64_t> layer;
    std::optional<Rect> bounds;
    std::optional<bool> isOnscreen;
};

/// kCGWindowListOptionAll and kCGWindowListOptionOnScreenOnly.
enum class WindowListOption { all = 0, onScreenOnly = 1 };

/// CGWindowListCopyWindowInfo with no relative window. Any thread.
class WindowList {
  public:
    virtual ~WindowList() = default;

    /// Front to back. Empty optional if the system returns no list.
    virtual std::optional<std::vector<WindowEntry>> copy(WindowListOption option) const = 0;
};

}  // namespace vantrel
