#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/world/DesktopState.h"
#include "platform/virtual/world/Displays.h"

namespace vantrel::virtualmac {

/// The windows of the other applications and their Spaces. A change of the Space or of the front application is noticed
/// here, whatever caused it: it is recorded in the journal, Space observers are told at the start of the change, and
/// the window list's flags follow a moment later. Any thread.
class VirtualDesktop {
  public:
    /// For this many seconds, window flags show the Space before a change of Space.
    static constexpr double defaultFlagDelay = 0.56;
    static constexpr double defaultFullScreenDuration = 0.7;

    /// `displays` returns the current ones. Any thread.
    VirtualDesktop(Engine& engine, std::function<Displays()> displays)
        : engine_(engine), displays_(std::move(displays)) {}

    /// Driver-facing: windows front to back.
    std::vector<AppWindow> windows() const;
    std::vector<AppWindow> windowsOf(ProcessIdentifier process) const;
    std::optional<AppWindow> window(std::int64_t number) const;
    /// The on-screen flag of the window list.
    bool isOnScreen(std::int64_t number) const;
    std::vector<SpaceRow> spaces() const;
    std::vector<FrontCandidate> front() const;
    bool isFrontmost(ProcessIdentifier process) const;
    bool isHidden(ProcessIdentifier process) const;
    /// The client's windows lie above all others, although the client is not in front, until another window comes to
    /// the front.
    bool areClientWindowsAbove() const;

    /// Driver-facing: what happens to a window. False if there is no such window or it does not change.
    bool close(std::int64_t number);
    bool setMinimised(std::int64_t number, bool minimised);
    /// Moves its top left corner, counted from the top left of the primary display; never above the bottom of the menu
    /// bar.
    bool move(std::int64_t number, Point origin);
    bool resize(std::int64_t number, Size size);
    bool setTitle(std::int64_t number, const std::string& title);
    bool raise(std::int64_t number);
    /// Begins the transition, which takes time. Requests during it are refused.
    bool setFullScreen(std::int64_t number, bool fullScreen);
    void setHidden(ProcessIdentifier process, bool hidden);
    /// How many seconds window flags are stale after a change of Space.
    void setFlagDelay(double seconds);
    /// How many seconds transitions to and from full screen take.
    void setFullScreenDuration(double seconds);

    /// For the applications: their windows, and coming to the front.
    std::int64_t open(ProcessIdentifier owner, const std::string& ownerName, const NewWindow& made);
    void bringToFront(const FrontCandidate& application);
    void processEnded(ProcessIdentifier process);
    void putClientWindowsAbove();
    /// Windows and Spaces follow the displays: at once, and not when somebody looks next.
    void followDisplays();

    /// Whether the display with that frame, from the bottom left of the primary one, shows a full-screen window. The
    /// client has none, so it is another application's.
    bool showsFullScreen(const Rect& display) const;
    bool mainDisplayShowsFullScreen() const;

    /// Set once, before the Mac starts: the client's process, and whether one of its own windows is on a desktop. With
    /// such a window it leaves no full screen in front of it when it comes to the front.
    ProcessIdentifier client = 0;
    std::function<bool()> clientShowsAWindow;

    /// Set once, before the Mac starts. Called on each change of Space, and when an application has closed its last
    /// window.
    std::vector<std::function<void()>> onSpaceChange;
    /// The same, when another application is in front.
    std::vector<std::function<void()>> onFrontChange;
    std::function<void(ProcessIdentifier)> onLastWindowClosed;

    /// Runs `function(state, happenings)` with the mutex held. What it adds to the happenings is recorded afterwards.
    template <class Function>
    auto change(Function function) const {
        Happenings happenings;
        const Displays displays = displays_();
        std::unique_lock guard(mutex_);
        const std::vector<SpaceRow> before = state_.spaces.rows();
        const std::vector<FrontCandidate> frontBefore = state_.front;
        state_.arrange(displays);
        if constexpr (std::is_void_v<decltype(function(state_, happenings))>) {
            function(state_, happenings);
            tell(guard, before, frontBefore, std::move(happenings));
        } else {
            auto result = function(state_, happenings);
            tell(guard, before, frontBefore, std::move(happenings));
            return result;
        }
    }
    template <class Function>
    auto read(Function function) const {
        return change([&function](const DesktopState& state, Happenings&) { return function(state); });
    }

  private:
    void tell(std::unique_lock<std::mutex>& guard, const std::vector<SpaceRow>& before,
              const std::vector<FrontCandidate>& frontBefore, Happenings happenings) const;
    bool changeWindow(std::int64_t number, const std::function<bool(DesktopState&, AppWindow&, Happenings&)>& function);
    bool setFrame(std::int64_t number, const std::function<Rect(const Rect&)>& next);

    Engine& engine_;
    const std::function<Displays()> displays_;
    mutable std::mutex mutex_;
    mutable DesktopState state_;
    /// How often the Space of a display has changed.
    mutable std::map<std::string, std::uint64_t> changes_;
    std::int64_t made_ = 1000;
    double flagDelay_ = defaultFlagDelay;
    double fullScreenDuration_ = defaultFullScreenDuration;
};

}  // namespace vantrel::virtualmac
