#pragma once

namespace vantrel::virtualmac {

// What the participant does, as families of events. Each event may have the field ignored, which says why it had no
// effect.

/// Actions on the client and its Mac. The text says on what.
enum class Deed {
    /// The field's id; value (what is typed).
    type,
    /// The button's id or title.
    press,
    /// No text.
    pressReturn,
    /// The button's title.
    answerAlert,
    /// No text.
    openStatusMenu,
    /// The menu's title.
    openMenu,
    /// The item's title.
    chooseMenuItem,
    /// No text.
    closeMenu,
    /// The letter of a key equivalent; an upper-case one also needs Shift.
    pressCommand,
    /// No text.
    closeWindow,
    /// No text.
    logOut,
    /// No text; value (yes, no).
    answerPermission,
};

/// Actions on other applications, Spaces and the keyboard. The text is the application's name, except where noted.
enum class DesktopDeed {
    /// The executable's path.
    openApplication,
    bringToFront,
    quit,
    kill,
    /// The name; value "x y".
    moveWindow,
    /// The name; value "width height".
    resizeWindow,
    minimiseWindow,
    restoreWindow,
    closeWindow,
    openWindow,
    toggleFullScreen,
    /// The name of the one whose others are hidden.
    hideOthers,
    /// No text: to the Space on the left.
    swipeLeft,
    /// No text.
    swipeRight,
    /// The key, as KeyStroke writes it; times? how often.
    pressKey,
};

}  // namespace vantrel::virtualmac
