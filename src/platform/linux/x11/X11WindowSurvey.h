#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/linux/x11/WindowAtoms.h"
#include "platform/linux/x11/WindowInquiry.h"
#include "platform/linux/x11/X11WindowFacts.h"
#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

/// Facts about many windows in the time of one: every request is sent before the first answer is awaited. What is asked
/// together with the list of windows is about those of the last look, and what turns out to be missing is asked after
/// it; every answer is of now. A window that disappears meanwhile is left out. Any thread.
class X11WindowSurvey {
  public:
    X11WindowSurvey(X11Connection& connection, X11Windows& windows)
        : connection_(connection), windows_(windows), atoms_(connection) {}

    /// The managed windows of all desktops, front to back, without what may be done with them. Empty optional if the X
    /// server is gone.
    std::optional<std::vector<X11WindowFacts>> frontToBack();

    /// The ordinary windows of a process, front to back.
    std::vector<xcb_window_t> ofProcess(ProcessIdentifier process);

    /// Empty if the window is gone.
    std::optional<X11WindowFacts> of(xcb_window_t window) { return of(window, WindowInquiry::About::everything); }

    /// The same, but only its state and its owner.
    std::optional<X11WindowFacts> stateOf(xcb_window_t window) { return of(window, WindowInquiry::About::state); }

  private:
    using Owners = std::map<xcb_window_t, ProcessIdentifier>;
    using Found = std::map<xcb_window_t, std::optional<X11WindowFacts>>;

    std::vector<X11WindowFacts> look(std::optional<ProcessIdentifier> process);
    std::vector<WindowInquiry> inquire(const std::vector<xcb_window_t>& windows, WindowInquiry::About about);
    std::optional<X11WindowFacts> of(xcb_window_t window, WindowInquiry::About about);
    static void answer(std::vector<WindowInquiry> inquiries, Found& found);
    void answer(const X11Windows::AskedOwners& asked, Owners& owners);
    Owners lastOwners() const;
    void remember(const std::vector<xcb_window_t>& windows, const Owners& owners);

    X11Connection& connection_;
    X11Windows& windows_;
    const WindowAtoms atoms_;
    mutable std::mutex mutex_;
    // Of the windows in the list of the last look.
    Owners lastOwners_;
};

}  // namespace vantrel::linuxdesktop
