#include "platform/virtual/world/VirtualDesktop.h"

#include <algorithm>

#include "platform/virtual/scheduler/NumberText.h"

namespace vantrel::virtualmac {

namespace {

Happening about(AppWindowEvent kind, const AppWindow& window) {
    return {kind,
            window.title,
            {{Field::pid, std::to_string(window.owner)}, {Field::number, std::to_string(window.number)}}};
}

Happening withFrame(Happening happening, const AppWindow& window) {
    happening.fields.emplace_back(Field::frame, describe(window.frame));
    return happening;
}

std::string describe(const DesktopState& state, const SpaceRow& row) {
    if (state.spaces.isFullScreen(row.current)) {
        if (const AppWindow* owner = state.ownerOf(row.current)) return "full screen of " + owner->title;
    }
    int desktop = 0;
    for (const Space& space : row.spaces) {
        if (!space.isFullScreen) ++desktop;
        if (space.id == row.current) break;
    }
    return "desktop " + std::to_string(desktop);
}

Happenings spaceChanges(const DesktopState& state, const std::vector<SpaceRow>& before) {
    Happenings changes;
    for (const SpaceRow& row : state.spaces.rows()) {
        const bool wasCurrent = std::any_of(before.begin(), before.end(),
                                            [&row](const SpaceRow& each) { return each.current == row.current; });
        const bool isNew = std::none_of(before.begin(), before.end(),
                                        [&row](const SpaceRow& each) { return each.display == row.display; });
        if (!wasCurrent && !isNew)
            changes.push_back({SystemEvent::spaceChanged, row.display, {{Field::space, describe(state, row)}}});
    }
    return changes;
}

}  // namespace

void VirtualDesktop::tell(std::unique_lock<std::mutex>& guard, const std::vector<SpaceRow>& before,
                          const std::vector<FrontCandidate>& frontBefore, Happenings happenings) const {
    const Happenings changes = spaceChanges(state_, before);
    for (const Happening& change : changes) {
        const std::string& display = change.text;
        engine_.world.after(flagDelay_, [this, display, number = ++changes_[display]] {
            const std::lock_guard settling(mutex_);
            if (changes_[display] == number) state_.settle(display);
        });
    }
    const bool frontChanged =
        !state_.front.empty() && (frontBefore.empty() || frontBefore.front().process != state_.front.front().process);
    const FrontCandidate front = state_.front.empty() ? FrontCandidate{} : state_.front.front();
    guard.unlock();
    for (Happening& each : happenings) {
        engine_.journal.emit(std::move(each));
    }
    for (const Happening& change : changes) {
        engine_.journal.emit(change);
        for (const auto& told : onSpaceChange) told();
    }
    if (!frontChanged) return;
    if (front.isTold) {
        engine_.journal.emit({ApplicationEvent::frontmost, front.name, {{Field::pid, std::to_string(front.process)}}});
    }
    for (const auto& told : onFrontChange) told();
}

std::vector<AppWindow> VirtualDesktop::windows() const {
    return read([](const DesktopState& state) { return state.windows; });
}

std::vector<AppWindow> VirtualDesktop::windowsOf(ProcessIdentifier process) const {
    return read([process](const DesktopState& state) { return state.windowsOf(process); });
}

std::optional<AppWindow> VirtualDesktop::window(std::int64_t number) const {
    return read([number](const DesktopState& state) {
        const AppWindow* found = state.find(number);
        return found == nullptr ? std::nullopt : std::optional(*found);
    });
}

bool VirtualDesktop::isOnScreen(std::int64_t number) const {
    return read([number](const DesktopState& state) {
        const AppWindow* found = state.find(number);
        return found != nullptr && state.isOnScreen(*found);
    });
}

std::vector<SpaceRow> VirtualDesktop::spaces() const {
    return read([](const DesktopState& state) { return state.spaces.rows(); });
}

std::vector<FrontCandidate> VirtualDesktop::front() const {
    return read([](const DesktopState& state) { return state.front; });
}

bool VirtualDesktop::isFrontmost(ProcessIdentifier process) const {
    return read([process](const DesktopState& state) { return state.isFrontmost(process); });
}

bool VirtualDesktop::isHidden(ProcessIdentifier process) const {
    return read([process](const DesktopState& state) { return state.isHidden(process); });
}

bool VirtualDesktop::areClientWindowsAbove() const {
    return read([](const DesktopState& state) { return state.clientWindowsAbove; });
}

bool VirtualDesktop::changeWindow(std::int64_t number,
                                  const std::function<bool(DesktopState&, AppWindow&, Happenings&)>& function) {
    return change([&](DesktopState& state, Happenings& happenings) {
        AppWindow* window = state.find(number);
        return window != nullptr && function(state, *window, happenings);
    });
}

bool VirtualDesktop::close(std::int64_t number) {
    std::optional<ProcessIdentifier> emptied;
    const bool closed = change([&](DesktopState& state, Happenings& happenings) {
        const auto window = state.close(number);
        if (!window) return false;
        happenings.push_back(about(AppWindowEvent::closed, *window));
        if (window->layer == 0 && state.windowsOf(window->owner).empty()) emptied = window->owner;
        return true;
    });
    if (emptied && onLastWindowClosed) onLastWindowClosed(*emptied);
    return closed;
}

bool VirtualDesktop::setMinimised(std::int64_t number, bool minimised) {
    return changeWindow(number, [minimised](DesktopState& state, AppWindow& window, Happenings& happenings) {
        if (window.minimised == minimised || window.fullScreen || window.inTransition) return false;
        window.minimised = minimised;
        happenings.push_back(about(minimised ? AppWindowEvent::minimised : AppWindowEvent::restored, window));
        if (!minimised) state.raise(window.number);
        return true;
    });
}

bool VirtualDesktop::setFrame(std::int64_t number, const std::function<Rect(const Rect&)>& next) {
    return changeWindow(number, [&next](DesktopState& state, AppWindow& window, Happenings& happenings) {
        const Rect before = window.frame;
        if (!state.setFrame(window, next(before))) return false;
        if (window.frame == before) return true;
        happenings.push_back(withFrame(about(AppWindowEvent::moved, window), window));
        return true;
    });
}

bool VirtualDesktop::move(std::int64_t number, Point origin) {
    return setFrame(number, [origin](const Rect& frame) { return Rect{origin, frame.size}; });
}

bool VirtualDesktop::resize(std::int64_t number, Size size) {
    return setFrame(number, [size](const Rect& frame) { return Rect{frame.origin, size}; });
}

bool VirtualDesktop::setTitle(std::int64_t number, const std::string& title) {
    return changeWindow(number, [&title](DesktopState&, AppWindow& window, Happenings& happenings) {
        window.title = title;
        happenings.push_back(about(AppWindowEvent::title, window));
        return true;
    });
}

bool VirtualDesktop::raise(std::int64_t number) {
    return changeWindow(number, [](DesktopState& state, AppWindow& window, Happenings&) {
        state.raise(window.number);
        return true;
    });
}

bool VirtualDesktop::setFullScreen(std::int64_t number, bool fullScreen) {
    double duration = 0;
    const bool begun = changeWindow(number, [&](DesktopState& state, AppWindow& window, Happenings&) {
        if (window.inTransition || window.fullScreen == fullScreen) return false;
        if (fullScreen) {
            state.beginFullScreen(window);
        } else {
            state.endFullScreen(window);
        }
        duration = fullScreenDuration_;
        return true;
    });
    if (!begun) return false;
    engine_.world.after(duration, [this, number, fullScreen] {
        changeWindow(number, [fullScreen](DesktopState& state, AppWindow& window, Happenings& happenings) {
            state.finishTransition(window, fullScreen);
            auto ended = withFrame(about(AppWindowEvent::fullScreen, window), window);
            ended.fields.emplace_back(Field::on, fullScreen ? "yes" : "no");
            happenings.push_back(std::move(ended));
            return true;
        });
    });
    return true;
}

void VirtualDesktop::setHidden(ProcessIdentifier process, bool hidden) {
    change([=](DesktopState& state, Happenings&) { state.setHidden(process, hidden); });
}

void VirtualDesktop::setFlagDelay(double seconds) {
    const std::lock_guard guard(mutex_);
    flagDelay_ = seconds;
}

void VirtualDesktop::setFullScreenDuration(double seconds) {
    const std::lock_guard guard(mutex_);
    fullScreenDuration_ = seconds;
}

std::int64_t VirtualDesktop::open(ProcessIdentifier owner, const std::string& ownerName, const NewWindow& made) {
    return change([&](DesktopState& state, Happenings& happenings) {
        const AppWindow& window = state.open(++made_, owner, ownerName, made);
        const std::int64_t number = window.number;
        happenings.push_back(withFrame(about(AppWindowEvent::opened, window), window));
        if (made.activates && made.layer == 0) state.bringToFront({owner, ownerName});
        return number;
    });
}

void VirtualDesktop::bringToFront(const FrontCandidate& application) {
    const bool showsDesktop = application.process == client && clientShowsAWindow && clientShowsAWindow();
    change([&](DesktopState& state, Happenings&) {
        state.bringToFront(application);
        if (showsDesktop) state.spaces.makeCurrent(state.spaces.desktop(state.spaces.rows().front()));
    });
}

bool VirtualDesktop::showsFullScreen(const Rect& display) const {
    const auto screens = displays_().screens;
    if (screens.empty()) return false;
    Rect frame = display;
    frame.origin.y = screens.front().frame.size.height - frame.origin.y - frame.size.height;
    return read(
        [&frame](const DesktopState& state) { return state.spaces.isFullScreen(state.spaces.rowOf(frame).current); });
}

bool VirtualDesktop::mainDisplayShowsFullScreen() const {
    const Displays displays = displays_();
    return displays.main < displays.screens.size() && showsFullScreen(displays.screens[displays.main].frame);
}

void VirtualDesktop::putClientWindowsAbove() {
    change([](DesktopState& state, Happenings&) { state.clientWindowsAbove = true; });
}

void VirtualDesktop::followDisplays() {
    change([](DesktopState&, Happenings&) {});
}

void VirtualDesktop::processEnded(ProcessIdentifier process) {
    change([process](DesktopState& state, Happenings& happenings) {
        const std::vector<AppWindow> windows = state.windows;
        for (const AppWindow& window : windows) {
            if (window.owner != process) continue;
            state.close(window.number);
            happenings.push_back(about(AppWindowEvent::closed, window));
        }
        state.leaveFront(process);
    });
}

}  // namespace vantrel::virtualmac
