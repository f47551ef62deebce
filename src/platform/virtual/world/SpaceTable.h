#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "platform/desktop/Geometry.h"
#include "platform/virtual/world/Displays.h"

namespace vantrel::virtualmac {

/// One Space. A desktop Space contains any number of windows; a full-screen Space belongs to one window.
struct Space {
    int id = 0;
    bool isFullScreen = false;
    bool operator==(const Space&) const = default;
};

/// The Spaces of one display, or of all displays together if they do not have separate Spaces.
struct SpaceRow {
    /// The display's name. Empty for all displays.
    std::string display;
    /// From left to right. At least one is a desktop Space.
    std::vector<Space> spaces;
    int current = 0;
    /// The Space that the window list's flags still show.
    int told = 0;
    bool operator==(const SpaceRow&) const = default;
};

/// The Spaces, and which of them are current. There is always at least one row.
class SpaceTable {
  public:
    /// Follows the displays. Without any, nothing changes. Returns the rows removed with their displays: their Spaces
    /// are gone.
    std::vector<SpaceRow> arrange(const Displays& displays);

    const std::vector<SpaceRow>& rows() const { return rows_; }
    /// Null if there is no such Space.
    const SpaceRow* rowOf(int space) const;
    const SpaceRow& rowOf(const Rect& frame) const { return rows_[rowIndex(frame)]; }

    /// The display that most likely shows the frame: the one that contains its centre, or else the primary one. From
    /// the top left.
    Rect display(const Rect& frame) const;
    Rect displayOfSpace(int space, const Rect& frame) const;

    bool isCurrent(int space) const;
    bool isTold(int space) const;
    bool isFullScreen(int space) const;
    /// The row's current Space if it is a desktop, or else its first desktop.
    int desktop(const SpaceRow& row) const;

    /// Adds a Space to the right of `left` and returns its id.
    int add(int left, bool isFullScreen);
    /// Windows left on it belong to no Space. The last desktop of a row is not removed.
    void remove(int space, int currentInstead);
    /// False if there is no such Space.
    bool makeCurrent(int space);
    /// From now on the flags are correct.
    void settle(const std::string& display);

  private:
    std::size_t rowIndex(const Rect& frame) const;
    std::size_t displayIndex(const Rect& frame) const;
    SpaceRow* find(int space);

    int made_ = 1;
    std::vector<SpaceRow> rows_{{"", {{1, false}}, 1, 1}};
    /// From the top left of the primary one.
    std::vector<Rect> displays_{{{0, 0}, {1440, 900}}};
    bool separate_ = false;
};

}  // namespace vantrel::virtualmac
