#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "platform/desktop/Geometry.h"
#include "platform/virtual/world/Displays.h"

namespace vantrel::virtualmac {

/// One Space. Desktop Spaces hold any number of windows, a full-screen Space belongs to one window.
struct Space {
    int id = 0;
    bool isFullScreen = false;
    bool operator==(const Space&) const = default;
};

/// The Spaces that one display shows in turn; all displays together when they do not have separate Spaces.
struct SpaceRow {
    /// The display's name; empty for all displays.
    std::string display;
    /// From left to right. At least one is a desktop Space.
    std::vector<Space> spaces;
    int current = 0;
    /// The one that the flags of the window list still tell.
    int told = 0;
    bool operator==(const SpaceRow&) const = default;
};

/// Which Spaces there are and which ones are current. There is always at least one row.
class SpaceTable {
  public:
    /// Follows the displays; with none at all nothing changes. Returns the rows that went with their displays: their
    /// Spaces are gone.
    std::vector<SpaceRow> arrange(const Displays& displays);

    const std::vector<SpaceRow>& rows() const { return rows_; }
    /// Null when there is no such Space.
    const SpaceRow* rowOf(int space) const;
    const SpaceRow& rowOf(const Rect& frame) const { return rows_[rowIndex(frame)]; }

    /// The display that most likely shows the frame: the one with its centre, else the primary one. From the top left.
    Rect display(const Rect& frame) const;
    Rect displayOfSpace(int space, const Rect& frame) const;

    bool isCurrent(int space) const;
    bool isTold(int space) const;
    bool isFullScreen(int space) const;
    /// The current Space of the row when it is a desktop, else the first desktop.
    int desktop(const SpaceRow& row) const;

    /// A new Space to the right of `left`; its id.
    int add(int left, bool isFullScreen);
    /// Windows that are left on it belong nowhere. The last desktop of a row stays.
    void remove(int space, int currentInstead);
    /// False when there is no such Space.
    bool makeCurrent(int space);
    /// From now on the flags tell the truth.
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
