#include "platform/virtual/desktop/VirtualSpaces.h"

#include <algorithm>
#include <utility>

namespace vantrel::virtualmac {

namespace {

const SpaceRow& rowNamed(const DesktopState& state, const std::string& display) {
    const auto& rows = state.spaces.rows();
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const SpaceRow& row) { return row.display == display; });
    return found == rows.end() ? rows.front() : *found;
}

std::size_t place(const SpaceRow& row) {
    const auto found = std::find_if(row.spaces.begin(), row.spaces.end(),
                                    [&row](const Space& space) { return space.id == row.current; });
    return static_cast<std::size_t>(found - row.spaces.begin());
}

/// Shows the Space and gives the keyboard to its front window.
bool show(DesktopState& state, const SpaceRow& row, std::size_t place) {
    if (place >= row.spaces.size()) return false;
    const int space = row.spaces[place].id;
    state.spaces.makeCurrent(space);
    for (const AppWindow& window : state.windows) {
        if (window.space != space || window.layer != 0 || window.minimised || window.hidden) continue;
        const FrontCandidate owner{window.owner, window.ownerName};
        state.leaveFront(owner.process);
        state.front.insert(state.front.begin(), owner);
        break;
    }
    return true;
}

}  // namespace

VirtualSpaces::VirtualSpaces(Engine& engine, VirtualDesktop& desktop) : desktop_(desktop), notices_(engine) {
    desktop_.onSpaceChange.emplace_back([this] { notices_.post(); });
}

std::unique_ptr<Observation> VirtualSpaces::observeActiveSpaceDidChange(Block block) {
    return notices_.observe(std::move(block));
}

bool VirtualSpaces::swipe(Direction direction, const std::string& display) {
    return desktop_.change([&](DesktopState& state, Happenings&) {
        const SpaceRow& row = rowNamed(state, display);
        // There is nothing to the left of the first one: the number wraps and is too large.
        return show(state, row, direction == Direction::left ? place(row) - 1 : place(row) + 1);
    });
}

bool VirtualSpaces::switchTo(std::size_t place, const std::string& display) {
    return desktop_.change(
        [&](DesktopState& state, Happenings&) { return show(state, rowNamed(state, display), place); });
}

void VirtualSpaces::addDesktop(const std::string& display) {
    desktop_.change(
        [&](DesktopState& state, Happenings&) { state.spaces.add(rowNamed(state, display).spaces.back().id, false); });
}

std::size_t VirtualSpaces::current(const std::string& display) const {
    return desktop_.read([&](const DesktopState& state) { return place(rowNamed(state, display)); });
}

bool VirtualSpaces::isFullScreen(const std::string& display) const {
    return desktop_.read(
        [&](const DesktopState& state) { return state.spaces.isFullScreen(rowNamed(state, display).current); });
}

std::size_t VirtualSpaces::count(const std::string& display) const {
    return desktop_.read([&](const DesktopState& state) { return rowNamed(state, display).spaces.size(); });
}

}  // namespace vantrel::virtualmac
