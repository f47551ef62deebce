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

/// A key for the application in front, repeated while it is held down.
struct PressKeys {
    virtualmac::KeyStroke key;
    int times = 1;
};

/// Brings the application to the front. If it does not run, it is started first, provided that its executable is known.
struct ShowApplication {
    std::string name;
    std::optional<OtherApplication> start;
};

/// An action on an application, or on its front window.
struct DoToApplication {
    enum class What { quit, kill, minimise, restore, close, toggleFullScreen, hideOthers };
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

/// Moves a display or changes its resolution.
struct ArrangeDisplay {
    Screen display;
};

struct MirrorDisplay {
    std::string name;
    bool mirrors = true;
};

/// How many notifications a change of the displays causes from now on.
struct SetDisplayNotices {
    int count = 1;
    double every = 0;
};

/// Somebody closes the client's cover over a display.
struct CloseCover {
    std::string display;
};

/// The system refuses keyboard taps, or allows them again.
struct SetTaps {
    bool work = true;
};

/// A password field somewhere takes the keyboard, or leaves it.
struct SetSecureInput {
    bool on = true;
};

/// The window list cannot be read, or can be again.
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

/// Elements work normally again.
struct MendElements {};

/// The elements of an application stop answering, or answer again.
struct SilenceApplication {
    std::string application;
    bool silent = true;
};

/// The client's main thread does nothing for this long.
struct HangClient {
    double seconds = 0;
};

/// Actions on the desktop: windows, keys, displays, and their faults.
using DesktopAction =
    std::variant<PressKeys, ShowApplication, DoToApplication, MoveWindow, ResizeWindow, OpenWindow, Swipe,
                 ArrangeDisplay, MirrorDisplay, SetDisplayNotices, CloseCover, SetTaps, SetSecureInput, SetWindowList,
                 FailElements, MendElements, SilenceApplication, HangClient>;

}  // namespace vantrel::rehearsal
