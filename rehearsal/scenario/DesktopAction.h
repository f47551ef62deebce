#pragma once

#include <optional>
#include <string>
#include <variant>

#include "platform/desktop/Screens.h"
#include "platform/virtual/desktop/AccessibilityFaults.h"
#include "platform/virtual/keyboard/KeyStroke.h"
#include "platform/virtual/world/AppWindow.h"
#include "rehearsal/scenario/MacSetup.h"

namespace vantrel::rehearsal {

/// A key that goes to whatever is in front, as often as it is held down for.
struct PressKeys {
    virtualmac::KeyStroke key;
    int times = 1;
};

/// The application comes to the front. One that does not run is started first where it is known what to start.
struct ShowApplication {
    std::string name;
    std::optional<OtherApplication> start;
};

/// Something done to an application, or to its front window.
struct DoToApplication {
    enum class What { quit, kill, minimise, restore, close, toggleFullScreen };
    What what = What::quit;
    std::string application;
};

struct MoveWindow {
    std::string application;
    Point origin;
};

struct ResizeWindow {
    std::string application;
    Size size;
};

struct OpenWindow {
    std::string application;
    virtualmac::NewWindow window;
};

struct Swipe {
    bool left = true;
};

/// A display is moved or gets another resolution.
struct ArrangeDisplay {
    Screen display;
};

struct MirrorDisplay {
    std::string name;
    bool mirrors = true;
};

/// How often a change of the displays is noticed from now on.
struct SetDisplayNotices {
    int count = 1;
    double every = 0;
};

/// The system refuses keyboard taps, or gives them again.
struct SetTaps {
    bool work = true;
};

/// The window list cannot be read, or can again.
struct SetWindowList {
    bool works = true;
};

/// Reads, writes or actions on elements of other applications fail.
struct FailElements {
    virtualmac::AccessibilityFaults::Operation operation = virtualmac::AccessibilityFaults::Operation::write;
    std::string name;
    AccessibilityError error = 0;
    int times = virtualmac::AccessibilityFaults::always;
};

/// They work as usual again.
struct MendElements {};

/// The elements of an application's processes do not answer any more, or do again.
struct SilenceApplication {
    std::string application;
    bool silent = true;
};

/// The client's main thread does nothing for so long.
struct HangClient {
    double seconds = 0;
};

/// What happens on the desktop: windows, keys, displays, and what goes wrong with them.
using DesktopAction = std::variant<PressKeys, ShowApplication, DoToApplication, MoveWindow, ResizeWindow, OpenWindow,
                                   Swipe, ArrangeDisplay, MirrorDisplay, SetDisplayNotices, SetTaps, SetWindowList,
                                   FailElements, MendElements, SilenceApplication, HangClient>;

}  // namespace vantrel::rehearsal
