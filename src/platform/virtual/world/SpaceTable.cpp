#include "platform/virtual/world/SpaceTable.h"

#include <algorithm>

namespace vantrel::virtualmac {

namespace {

bool holds(const SpaceRow& row, int space) {
    return std::any_of(row.spaces.begin(), row.spaces.end(), [space](const Space& each) { return each.id == space; });
}

/// One row for each display, or one for all.
std::vector<std::string> rowNames(const Displays& displays) {
    if (!displays.haveSeparateSpaces) return {""};
    std::vector<std::string> names;
    for (const Screen& screen : displays.screens) {
        std::string name = screen.localizedName;
        while (std::find(names.begin(), names.end(), name) != names.end()) name += "'";
        names.push_back(std::move(name));
    }
    return names;
}

}  // namespace

std::vector<SpaceRow> SpaceTable::arrange(const Displays& displays) {
    if (displays.screens.empty()) return {};
    const double height = displays.screens.front().frame.size.height;
    displays_.clear();
    for (const Screen& screen : displays.screens) {
        const Rect& frame = screen.frame;
        displays_.push_back({{frame.origin.x, height - frame.origin.y - frame.size.height}, frame.size});
    }
    separate_ = displays.haveSeparateSpaces;
    std::vector<SpaceRow> rows;
    for (const std::string& name : rowNames(displays)) {
        auto found = std::find_if(rows_.begin(), rows_.end(), [&](const SpaceRow& row) { return row.display == name; });
        // The initial row belongs to no display; the first display takes it over.
        if (found == rows_.end() && rows.empty() && rows_.size() == 1) found = rows_.begin();
        if (found == rows_.end()) {
            const int id = ++made_;
            rows.push_back({name, {{id, false}}, id, id});
            continue;
        }
        rows.push_back(std::move(*found));
        rows.back().display = name;
        rows_.erase(found);
    }
    return std::exchange(rows_, std::move(rows));
}

const SpaceRow* SpaceTable::rowOf(int space) const {
    const auto found = std::find_if(rows_.begin(), rows_.end(), [=](const SpaceRow& row) { return holds(row, space); });
    return found == rows_.end() ? nullptr : &*found;
}

SpaceRow* SpaceTable::find(int space) {
    const auto found = std::find_if(rows_.begin(), rows_.end(), [=](const SpaceRow& row) { return holds(row, space); });
    return found == rows_.end() ? nullptr : &*found;
}

std::size_t SpaceTable::displayIndex(const Rect& frame) const {
    const Point centre{frame.origin.x + frame.size.width / 2, frame.origin.y + frame.size.height / 2};
    const auto found = std::find_if(displays_.begin(), displays_.end(), [centre](const Rect& each) {
        return centre.x >= each.origin.x && centre.x < each.origin.x + each.size.width && centre.y >= each.origin.y &&
               centre.y < each.origin.y + each.size.height;
    });
    return found == displays_.end() ? 0 : static_cast<std::size_t>(found - displays_.begin());
}

std::size_t SpaceTable::rowIndex(const Rect& frame) const {
    return separate_ ? std::min(displayIndex(frame), rows_.size() - 1) : 0;
}

Rect SpaceTable::display(const Rect& frame) const {
    return displays_[displayIndex(frame)];
}

Rect SpaceTable::displayOfSpace(int space, const Rect& frame) const {
    const SpaceRow* row = rowOf(space);
    if (!separate_ || row == nullptr) return display(frame);
    return displays_[std::min(static_cast<std::size_t>(row - rows_.data()), displays_.size() - 1)];
}

bool SpaceTable::isCurrent(int space) const {
    return std::any_of(rows_.begin(), rows_.end(), [space](const SpaceRow& row) { return row.current == space; });
}

bool SpaceTable::isTold(int space) const {
    return std::any_of(rows_.begin(), rows_.end(), [space](const SpaceRow& row) { return row.told == space; });
}

bool SpaceTable::isFullScreen(int space) const {
    const SpaceRow* row = rowOf(space);
    return row != nullptr && std::find(row->spaces.begin(), row->spaces.end(), Space{space, true}) != row->spaces.end();
}

int SpaceTable::desktop(const SpaceRow& row) const {
    if (!isFullScreen(row.current)) return row.current;
    return std::find_if(row.spaces.begin(), row.spaces.end(), [](const Space& each) { return !each.isFullScreen; })->id;
}

int SpaceTable::add(int left, bool isFullScreen) {
    SpaceRow* row = find(left);
    if (row == nullptr) row = &rows_.front();
    const auto found =
        std::find_if(row->spaces.begin(), row->spaces.end(), [left](const Space& each) { return each.id == left; });
    const int id = ++made_;
    row->spaces.insert(found == row->spaces.end() ? found : found + 1, {id, isFullScreen});
    return id;
}

void SpaceTable::remove(int space, int currentInstead) {
    SpaceRow* row = find(space);
    if (row == nullptr) return;
    const auto desktops =
        std::count_if(row->spaces.begin(), row->spaces.end(), [](const Space& each) { return !each.isFullScreen; });
    if (!isFullScreen(space) && desktops == 1) return;
    std::erase_if(row->spaces, [space](const Space& each) { return each.id == space; });
    if (row->current != space) return;
    row->current = row->spaces.front().id;
    row->current = holds(*row, currentInstead) ? currentInstead : desktop(*row);
}

bool SpaceTable::makeCurrent(int space) {
    SpaceRow* row = find(space);
    if (row == nullptr) return false;
    row->current = space;
    return true;
}

void SpaceTable::settle(const std::string& display) {
    for (SpaceRow& row : rows_) {
        if (row.display == display) row.told = row.current;
    }
}

}  // namespace vantrel::virtualmac
