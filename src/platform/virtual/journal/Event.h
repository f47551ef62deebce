#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantrel::virtualmac {

/// Something that happened on the virtual Mac and that someone outside can see. Kinds, their text, and their fields in
/// this order (a field that is marked ? may be missing; fields marked * come any number of times):
///
///   log                     the line
///   request                 "METHOD ADDRESS"; header* "Name: value", body?
///   redirect                "METHOD ADDRESS" of the next hop
///   reply                   the address asked for; error? or status? and body? (no status: the response is not HTTP)
///   alert-shown             message text; style (warning, informational, critical), information, button*
///   alert-answered          the button's title; message (the alert's)
///   window-shown            the title; frame
///   window-hidden           the title
///   window-key              the title
///   window-style            the title; mask (decimal)
///   window-centered         the title
///   window-closed           the title, by the participant
///   view-shown, view-hidden the view's id
///   text                    the control's id; value
///   enabled, disabled       the control's id
///   main-menu               title of every submenu, comma-separated
///   activation-policy       the number
///   activate                this application asks to come to the front
///   terminate-asked         (empty)
///   terminate-refused       (empty)
///   terminated              (empty); the process is over, nothing of it is heard any more
///   accessibility-prompt    (empty)
///   permission-requested    microphone, camera
///   permission-prompt       microphone, camera
///   permission-answered     microphone, camera; granted (yes, no)
///   url-opened              the address; opened (yes, no)
///   status-item-installed   (empty)
///   status-item-title       the title
///   status-item-menu        (empty); item* title, "-" for a separator, in brackets when disabled
///   status-item-removed     the title
///   menu-opened             the title of the status item or main menu
///   menu-closed             the same; chosen? the item's title
///   setting-saved           the key; value
///   keyboard-tap-created, keyboard-tap-refused, keyboard-tap-removed    (empty)
///   tap-disabled            timeout, user input
///   key-swallowed           the key, as KeyStroke writes it; code, flags, name (what the client calls it)
///   key-delivered           the key; code, flags, application? (none: it is a shortcut of the system, or nobody is in
///                           front). Before what it brings about
///   overlay-shown           frame "x y width height" from the bottom left of the primary display; level, label*
///   overlay-hidden, overlay-raised, overlay-closed    frame. Raised: it is above a window that lay above it
///   overlay-level           frame; level
///   screens-changed         (empty); screen* "name x y width height"
///   process-started         the executable's path; pid, argument*
///   process-exited          the path, of a process that was not listed among the running applications; pid
///   signal                  its number; pid, error?
///   application-started, application-exited    name; pid
///   application-activate    name; pid, options (0, or 2: ignoring the other applications)
///   application-terminate, application-force-terminate      name; pid
///   application-frontmost   name of the application that is in front now; pid. The client is not told of when it asked
///                           for it itself (activate)
///   application-opened      the address; application (its address), activates (yes, no)
///   app-window-opened, app-window-moved    title of another application's window; pid, number, frame "x y width
///                           height" from the top left of the primary display
///   app-window-closed, app-window-minimised, app-window-restored, app-window-title    title; pid, number
///   app-window-fullscreen   title, when the transition ends; pid, number, frame, on (yes, no)
///   space-changed           the display, empty for all of them; space ("desktop N" from the left, "full screen of
///                           TITLE"). At the start of the change
///   accessibility-set       the attribute; pid, window?, value, error?. Before what it brings about
///   accessibility-action    the action; pid, window?, error?
///   lid                     seconds the lid was closed
///   participant             what was done: "type ID", "press ID", "return", "answer TITLE", "open-status-menu",
///                           "open-menu TITLE", "choose TITLE", "close-menu", "command KEY", "close-window", "log-out",
///                           "answer-permission"; elsewhere "open PATH", "bring-to-front APP", "quit APP", "kill APP",
///                           "move APP", "resize APP", "minimise APP", "restore APP", "close APP", "new-window APP",
///                           "full-screen APP", "swipe left", "swipe right", "key KEY"; value? what was typed, or where
///                           to, times? how often, ignored? why it had no effect
struct Event {
    /// Seconds of uptime.
    double time = 0;
    std::string kind;
    std::string text;
    std::vector<std::pair<std::string, std::string>> fields;

    /// The first field of that name; empty when there is none.
    std::string field(std::string_view name) const {
        for (const auto& [key, value] : fields) {
            if (key == name) return value;
        }
        return {};
    }
};

/// Called on whatever thread acts, one event at a time, in the order of the events. It may look at the Mac and post to
/// it, but neither waits nor makes a platform call.
using EventSink = std::function<void(const Event&)>;

}  // namespace vantrel::virtualmac
