#include "rehearsal/transcript/ParticipantLines.h"

#include <utility>

namespace vantrel::rehearsal {
namespace {

using virtualmac::DesktopDeed;
using virtualmac::Field;
using virtualmac::Happening;

std::string pressesCommand(const std::string& text) {
    // An upper-case letter also needs Shift.
    const char key = text.empty() ? ' ' : text.back();
    const bool isLower = key >= 'a' && key <= 'z';
    return std::string("presses ") + (isLower ? "Command-" : "Command-Shift-") +
           (isLower ? static_cast<char>(key - 'a' + 'A') : key);
}

std::string does(virtualmac::Deed deed, const std::string& text) {
    switch (deed) {
        case virtualmac::Deed::type:
            return "types into " + titleOf(text);
        case virtualmac::Deed::press:
            return "presses " + titleOf(text);
        case virtualmac::Deed::pressReturn:
            return "presses Return";
        case virtualmac::Deed::answerAlert:
            return "answers " + titleOf(text);
        case virtualmac::Deed::openStatusMenu:
            return "opens the status menu";
        case virtualmac::Deed::openMenu:
            return "opens the menu " + titleOf(text);
        case virtualmac::Deed::chooseMenuItem:
            return "chooses " + titleOf(text);
        case virtualmac::Deed::closeMenu:
            return "closes the menu";
        case virtualmac::Deed::pressCommand:
            return pressesCommand(text);
        case virtualmac::Deed::closeWindow:
            return "closes the window";
        case virtualmac::Deed::logOut:
            return "logs out";
        case virtualmac::Deed::answerPermission:
            return "answers the permission prompt";
    }
    return {};
}

std::string does(DesktopDeed deed, const std::string& text) {
    switch (deed) {
        case DesktopDeed::openApplication:
            return "starts " + titleOf(text);
        case DesktopDeed::bringToFront:
            return "brings to the front " + titleOf(text);
        case DesktopDeed::quit:
            return "quits " + titleOf(text);
        case DesktopDeed::kill:
            return "kills " + titleOf(text);
        case DesktopDeed::moveWindow:
            return "moves the window of " + titleOf(text);
        case DesktopDeed::resizeWindow:
            return "resizes the window of " + titleOf(text);
        case DesktopDeed::minimiseWindow:
            return "minimises the window of " + titleOf(text);
        case DesktopDeed::restoreWindow:
            return "restores the window of " + titleOf(text);
        case DesktopDeed::closeWindow:
            return "closes the window of " + titleOf(text);
        case DesktopDeed::openWindow:
            return "opens a window of " + titleOf(text);
        case DesktopDeed::toggleFullScreen:
            return "toggles full screen of " + titleOf(text);
        case DesktopDeed::hideOthers:
            return "hides all but " + titleOf(text);
        case DesktopDeed::swipeLeft:
            return "swipes to the left";
        case DesktopDeed::swipeRight:
            return "swipes to the right";
        case DesktopDeed::pressKey:
            return "presses the key " + titleOf(text);
    }
    return {};
}

EventEntry withIgnored(std::string text, const Happening& event) {
    EventEntry entry{"participant", std::move(text)};
    if (event.has(Field::ignored)) entry.more.push_back("ignored: " + event.field(Field::ignored));
    return entry;
}

}  // namespace

EventEntry entryOf(virtualmac::Deed deed, const Happening& event) {
    std::string text = does(deed, event.text);
    if (event.has(Field::value)) text += ": " + inQuotes(event.field(Field::value));
    return withIgnored(std::move(text), event);
}

EventEntry entryOf(DesktopDeed deed, const Happening& event) {
    std::string text = does(deed, event.text);
    if (event.has(Field::value)) text += " to " + event.field(Field::value);
    if (event.has(Field::times)) text += ", " + event.field(Field::times) + " times";
    return withIgnored(std::move(text), event);
}

}  // namespace vantrel::rehearsal
