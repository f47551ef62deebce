#include "platform/virtual/world/DesktopState.h"

#include <algorithm>
#include <utility>

namespace vantrel::virtualmac {

void DesktopState::arrange(const Displays& displays) {
    for (const SpaceRow& gone : spaces.arrange(displays)) {
        for (const Space& space : gone.spaces) {
            for (AppWindow& window : windows) {
                if (window.space == space.id) moveToPrimary(window, space.isFullScreen);
            }
        }
    }
    for (AppWindow& window : windows) {
        if (window.fullScreen && !window.inTransition) window.frame = spaces.displayOfSpace(window.space, window.frame);
    }
}

void DesktopState::moveToPrimary(AppWindow& window, bool wasFullScreenSpace) {
    const SpaceRow& primary = spaces.rows().front();
    const int desktop = spaces.desktop(primary);
    window.spaceBefore = desktop;
    window.space = wasFullScreenSpace ? spaces.add(primary.spaces.back().id, true) : desktop;
    window.toldSpace = window.space;
    const Rect display = spaces.displayOfSpace(desktop, {});
    window.frameBefore.origin = window.frame.origin = display.origin;
    window.frame = belowMenuBar(window.frame);
    window.frameBefore = belowMenuBar(window.frameBefore);
}

AppWindow* DesktopState::find(std::int64_t number) {
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [number](const AppWindow& window) { return window.number == number; });
    return found == windows.end() ? nullptr : &*found;
}

const AppWindow* DesktopState::find(std::int64_t number) const {
    return const_cast<DesktopState*>(this)->find(number);
}

const AppWindow* DesktopState::ownerOf(int fullScreenSpace) const {
    const auto found = std::find_if(windows.begin(), windows.end(), [fullScreenSpace](const AppWindow& window) {
        return window.space == fullScreenSpace && window.ownsItsSpace();
    });
    return found == windows.end() ? nullptr : &*found;
}

std::vector<AppWindow> DesktopState::windowsOf(ProcessIdentifier process) const {
    std::vector<AppWindow> found;
    for (const AppWindow& window : windows) {
        if (window.owner == process && window.layer == 0) found.push_back(window);
    }
    return found;
}

AppWindow* DesktopState::frontWindow(ProcessIdentifier process) {
    const auto found = std::find_if(windows.begin(), windows.end(), [process](const AppWindow& window) {
        return window.owner == process && window.layer == 0 && !window.minimised && !window.hidden;
    });
    return found == windows.end() ? nullptr : &*found;
}

const AppWindow* DesktopState::frontWindow(ProcessIdentifier process) const {
    return const_cast<DesktopState*>(this)->frontWindow(process);
}

bool DesktopState::isOnScreen(const AppWindow& window) const {
    return !window.minimised && !window.hidden && spaces.isTold(window.toldSpace);
}

AppWindow& DesktopState::open(std::int64_t number, ProcessIdentifier owner, const std::string& ownerName,
                              const NewWindow& made) {
    AppWindow window;
    window.number = number;
    window.owner = owner;
    window.ownerName = ownerName;
    window.title = made.title;
    window.layer = made.layer;
    window.hasCloseButton = made.hasCloseButton;
    window.refusesToClose = made.refusesToClose;
    window.frame = made.layer == 0 ? belowMenuBar(made.frame) : made.frame;
    const SpaceRow& row = spaces.rowOf(window.frame);
    const bool ofItsOwn = std::any_of(windows.begin(), windows.end(), [&](const AppWindow& each) {
        return each.owner == owner && each.space == row.current;
    });
    window.space = window.toldSpace = ofItsOwn ? row.current : spaces.desktop(row);
    clientWindowsAbove = false;
    return *windows.insert(windows.begin(), std::move(window));
}

std::optional<AppWindow> DesktopState::close(std::int64_t number) {
    const AppWindow* window = find(number);
    if (window == nullptr) return std::nullopt;
    AppWindow closed = *window;
    std::erase_if(windows, [number](const AppWindow& each) { return each.number == number; });
    // A window that was only opened on another one's full-screen Space does not remove that Space.
    if (!spaces.isFullScreen(closed.space) || !closed.ownsItsSpace()) return closed;
    // Other windows of the application may have been opened on its Space.
    for (AppWindow& each : windows) {
        if (each.space == closed.space) each.space = each.toldSpace = closed.spaceBefore;
    }
    spaces.remove(closed.space, closed.spaceBefore);
    return closed;
}

void DesktopState::raise(std::int64_t number) {
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [number](const AppWindow& window) { return window.number == number; });
    if (found == windows.end()) return;
    std::rotate(windows.begin(), found, found + 1);
    clientWindowsAbove = false;
}

Rect DesktopState::belowMenuBar(Rect frame) const {
    frame.origin.y = std::max(frame.origin.y, spaces.display(frame).origin.y + menuBarHeight);
    return frame;
}

bool DesktopState::setFrame(AppWindow& window, const Rect& frame) {
    if (window.fullScreen || window.inTransition) return false;
    window.frame = window.layer == 0 ? belowMenuBar(frame) : frame;
    const SpaceRow& row = spaces.rowOf(window.frame);
    // On another display it is on the Space shown there.
    if (&row != spaces.rowOf(window.space)) window.space = window.toldSpace = spaces.desktop(row);
    return true;
}

void DesktopState::setHidden(ProcessIdentifier process, bool hidden) {
    if (hidden) {
        hidden_.insert(process);
    } else {
        hidden_.erase(process);
    }
    for (AppWindow& window : windows) {
        if (window.owner == process) window.hidden = hidden;
    }
}

void DesktopState::bringToFront(const FrontCandidate& application) {
    leaveFront(application.process);
    front.insert(front.begin(), application);
    setHidden(application.process, false);
    const AppWindow* window = frontWindow(application.process);
    if (window == nullptr) return;
    const int space = window->space;
    const bool isShown = std::any_of(windows.begin(), windows.end(), [&](const AppWindow& each) {
        return each.owner == application.process && each.layer == 0 && !each.minimised && spaces.isCurrent(each.space);
    });
    raise(window->number);
    if (!isShown) spaces.makeCurrent(space);
}

void DesktopState::leaveFront(ProcessIdentifier process) {
    std::erase_if(front, [process](const FrontCandidate& each) { return each.process == process; });
}

void DesktopState::beginFullScreen(AppWindow& window) {
    const bool follows = spaces.isCurrent(window.space) || isFrontmost(window.owner);
    window.inTransition = true;
    window.minimised = false;
    window.frameBefore = window.frame;
    window.spaceBefore = window.space;
    window.space = spaces.add(window.space, true);
    if (follows) spaces.makeCurrent(window.space);
}

void DesktopState::endFullScreen(AppWindow& window) {
    window.inTransition = true;
    const int own = window.space;
    window.space = window.spaceBefore;
    if (spaces.rowOf(window.space) == nullptr) {
        const SpaceRow* row = spaces.rowOf(own);
        window.space = spaces.desktop(row == nullptr ? spaces.rows().front() : *row);
    }
    for (AppWindow& each : windows) {
        if (each.space == own) each.space = window.space;
    }
    spaces.remove(own, window.space);
}

void DesktopState::finishTransition(AppWindow& window, bool fullScreen) {
    window.inTransition = false;
    window.fullScreen = fullScreen;
    window.toldSpace = window.space;
    window.frame = fullScreen ? spaces.displayOfSpace(window.space, window.frame) : window.frameBefore;
}

void DesktopState::settle(const std::string& display) {
    spaces.settle(display);
    for (AppWindow& window : windows) {
        const SpaceRow* row = spaces.rowOf(window.space);
        if (row == nullptr || row->display == display) window.toldSpace = window.space;
    }
}

}  // namespace vantrel::virtualmac
