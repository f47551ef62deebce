#pragma once

#include <type_traits>
#include <utility>
#include <variant>

#include "platform/virtual/journal/Deed.h"

namespace vantrel::virtualmac {

// All events; each family is an enumeration. Beside each kind is its text, followed by its fields in order; a field
// marked ? may be missing, fields marked * may be repeated. A new kind needs a line in rehearsal/transcript/, where the
// compiler asks for it. A new family must be added to EventKind too.

/// What this application does as a whole.
enum class ClientEvent {
    /// The line.
    log,
    /// The number.
    activationPolicy,
    /// Title of every submenu, comma-separated.
    mainMenu,
    /// No text: it asks to come to the front.
    activate,
    /// No text.
    terminateAsked,
    /// No text.
    terminateRefused,
    /// No text: the process is over, nothing more of it is recorded.
    terminated,
    /// The address; opened (yes, no).
    urlOpened,
    /// The key; value.
    settingSaved,
};

enum class NetworkEvent {
    /// "METHOD ADDRESS"; header* "Name: value", body?
    request,
    /// "METHOD ADDRESS" of the next hop.
    redirect,
    /// The address asked for; error? or status? and body? (no status: the response is not HTTP).
    reply,
};

enum class AlertEvent {
    /// Message text; style (warning, informational, critical), information, button*
    shown,
    /// The button's title; message (the alert's).
    answered,
    /// The message text: another application's full screen, which it is not let into, is in front of it. Only when it
    /// was seen, or after shown.
    unseen,
    /// The message text: it was not seen before.
    seen,
    /// The message text: while it is not seen, the client orders it to the front.
    orderedFront,
    /// The message text: while it is not seen, the client lets it join all applications.
    joinsAll,
    /// The button's title, as whose press it counts; message (the alert's): the client ends it.
    stopped,
};

/// A window of this application.
enum class WindowEvent {
    /// The title; frame.
    shown,
    /// The title.
    hidden,
    /// The title.
    key,
    /// The title: it lies above the windows of the application in front, whose place this one has not got.
    orderedFront,
    /// The title; mask (decimal).
    style,
    /// The title.
    centered,
    /// The title: by the participant.
    closed,
};

/// A view in a window of this application.
enum class ViewEvent {
    /// The view's id.
    shown,
    /// The view's id.
    hidden,
};

enum class ControlEvent {
    /// The control's id; value.
    text,
    /// The control's id.
    enabled,
    /// The control's id.
    disabled,
};

enum class StatusItemEvent {
    /// No text.
    installed,
    /// The title.
    title,
    /// No text; item* title, "-" for a separator, in brackets if disabled.
    menu,
    /// The title.
    removed,
};

enum class MenuEvent {
    /// The title of the status item or main menu.
    opened,
    /// The same; chosen? the item's title.
    closed,
};

enum class PermissionEvent {
    /// No text: the system asks for accessibility.
    accessibilityPrompt,
    /// microphone, camera.
    requested,
    /// microphone, camera: the system asks.
    prompt,
    /// microphone, camera; granted (yes, no).
    answered,
};

enum class KeyboardEvent {
    /// No text.
    tapCreated,
    /// No text.
    tapRefused,
    /// No text.
    tapRemoved,
    /// timeout, user input.
    tapDisabled,
    /// The key, as KeyStroke writes it; code, flags.
    swallowed,
    /// The key; code, flags, application? (none: it is a system shortcut, or no application is in front). Comes before
    /// its effects.
    delivered,
};

/// The text is the frame, "x y width height" from the bottom left of the primary display.
enum class OverlayEvent {
    /// Frame; level, label*
    shown,
    /// Frame.
    hidden,
    /// Frame: it is now above a window that was above it.
    raised,
    /// Frame.
    closed,
    /// Frame; level.
    level,
    /// Frame: its display shows another application's full screen, which it is not let into. Only when it was seen, or
    /// after shown.
    unseen,
    /// Frame: it was not seen before.
    seen,
};

/// The Mac itself.
enum class SystemEvent {
    /// No text; screen* "name x y width height".
    screensChanged,
    /// The display, empty for all of them; space ("desktop N" from the left, "full screen of TITLE"). At the start of
    /// the change.
    spaceChanged,
    /// Seconds the lid was closed.
    lid,
};

enum class ProcessEvent {
    /// The executable's path; pid, argument*
    started,
    /// The path, of a process that was not listed among the running applications; pid.
    exited,
    /// Its number; pid, error?
    signal,
};

/// A running application. Only frontmost may be about this one.
enum class ApplicationEvent {
    /// Name; pid.
    started,
    /// Name; pid.
    exited,
    /// Name; pid, options (0, or 2: ignoring the other applications), error? if the process has ended.
    activate,
    /// Name; pid, options, application (the name of the one in whose place), error? as above.
    activateFrom,
    /// Name; pid, error? as above.
    terminate,
    /// Name; pid, error? as above.
    forceTerminate,
    /// Name of the application that is in front now; pid. Not sent when the client itself asked for it
    /// (ClientEvent::activate).
    frontmost,
    /// The address; application (its address), activates (yes, no).
    opened,
};

/// A window of another application: its title; pid, number.
enum class AppWindowEvent {
    /// Also frame, "x y width height" from the top left of the primary display.
    opened,
    /// Also frame.
    moved,
    closed,
    minimised,
    restored,
    title,
    /// When the transition ends; also frame, on (yes, no).
    fullScreen,
};

/// An accessibility element.
enum class ElementEvent {
    /// The attribute; pid, window?, value, error? Comes before its effects.
    set,
    /// The action; pid, window?, error?
    action,
};

/// A kind of one of the families.
class EventKind {
  public:
    using Family = std::variant<ClientEvent, NetworkEvent, AlertEvent, WindowEvent, ViewEvent, ControlEvent,
                                StatusItemEvent, MenuEvent, PermissionEvent, KeyboardEvent, OverlayEvent, SystemEvent,
                                ProcessEvent, ApplicationEvent, AppWindowEvent, ElementEvent, Deed, DesktopDeed>;

    template <class Kind>
    requires std::is_enum_v<Kind> && std::is_constructible_v<Family, Kind> EventKind(Kind kind) : family_(kind) {}

    template <class Kind>
    bool isA() const {
        return std::holds_alternative<Kind>(family_);
    }

    /// Calls `function` with the kind as a value of its enumeration.
    template <class Function>
    auto visit(Function&& function) const {
        return std::visit(std::forward<Function>(function), family_);
    }

    bool operator==(const EventKind&) const = default;

  private:
    Family family_;
};

}  // namespace vantrel::virtualmac
