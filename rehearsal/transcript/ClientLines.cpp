#include "rehearsal/transcript/ClientLines.h"

#include <algorithm>
#include <cstdlib>

#include "platform/ui/Window.h"
#include "rehearsal/transcript/PrintableText.h"

namespace vantrel::rehearsal {
namespace {

using virtualmac::AlertEvent;
using virtualmac::ClientEvent;
using virtualmac::ControlEvent;
using virtualmac::Field;
using virtualmac::Happening;
using virtualmac::MenuEvent;
using virtualmac::NetworkEvent;
using virtualmac::PermissionEvent;
using virtualmac::StatusItemEvent;
using virtualmac::ViewEvent;
using virtualmac::WindowEvent;

std::string mainMenuTitles(const std::string& titles) {
    std::string text;
    for (std::size_t start = 0; start <= titles.size();) {
        const auto end = std::min(titles.find(',', start), titles.size());
        text += (start == 0 ? "" : ", ") + titleOf(titles.substr(start, end - start));
        start = end + 1;
    }
    return text;
}

EventEntry request(const Happening& event) {
    EventEntry entry{"request", event.text, event.all(Field::header)};
    if (event.has(Field::body)) entry.more.push_back(printableBody(event.field(Field::body)));
    return entry;
}

EventEntry reply(const Happening& event) {
    if (event.has(Field::error)) return {"reply", "error from " + event.text, {event.field(Field::error)}};
    const auto status = event.has(Field::status) ? event.field(Field::status) : "not HTTP";
    EventEntry entry{"reply", status + " from " + event.text};
    if (event.has(Field::body)) entry.more.push_back(printableBody(event.field(Field::body)));
    return entry;
}

EventEntry alert(const Happening& event) {
    EventEntry entry{"alert", event.field(Field::style) + ": " + event.text};
    const auto information = event.field(Field::information);
    if (!information.empty()) entry.more.push_back(information);
    std::string buttons;
    for (const auto& button : event.all(Field::button)) buttons += (buttons.empty() ? "[" : " [") + button + "]";
    entry.more.push_back(buttons);
    return entry;
}

std::string styleNames(const std::string& decimalMask) {
    const auto mask = std::strtoul(decimalMask.c_str(), nullptr, 10);
    std::string names;
    const auto add = [&](unsigned bit, const char* name) {
        if ((mask & bit) != 0) names += (names.empty() ? "" : ", ") + std::string(name);
    };
    add(windowTitled, "titled");
    add(windowClosable, "closable");
    add(windowMiniaturizable, "miniaturizable");
    return names.empty() ? "none" : names;
}

}  // namespace

EventEntry entryOf(ClientEvent kind, const Happening& event) {
    switch (kind) {
        case ClientEvent::log:
            return {"log", event.text};
        case ClientEvent::activationPolicy:
            return {"client", "has activation policy " + event.text};
        case ClientEvent::mainMenu:
            return {"main menu", mainMenuTitles(event.text)};
        case ClientEvent::activate:
            return {"client", "asks to come to the front"};
        case ClientEvent::terminateAsked:
            return {"client", "is asked to quit"};
        case ClientEvent::terminateRefused:
            return {"client", "refuses to quit"};
        case ClientEvent::terminated:
            return {"client", "quits"};
        case ClientEvent::urlOpened:
            return {"url", (event.field(Field::opened) == "yes" ? "opened: " : "not opened: ") + event.text};
        case ClientEvent::settingSaved:
            return {"setting", event.text + " = " + inQuotes(event.field(Field::value))};
    }
    return {};
}

EventEntry entryOf(NetworkEvent kind, const Happening& event) {
    switch (kind) {
        case NetworkEvent::request:
            return request(event);
        case NetworkEvent::redirect:
            return {"redirect", event.text};
        case NetworkEvent::reply:
            return reply(event);
    }
    return {};
}

EventEntry entryOf(AlertEvent kind, const Happening& event) {
    switch (kind) {
        case AlertEvent::shown:
            return alert(event);
        case AlertEvent::answered:
            return {"answer", "[" + event.text + "] to: " + event.field(Field::message)};
        case AlertEvent::unseen:
            return {"alert", "nobody sees: " + event.text};
        case AlertEvent::seen:
            return {"alert", "is seen: " + event.text};
        case AlertEvent::orderedFront:
            return {"alert", "is ordered to the front: " + event.text};
        case AlertEvent::joinsAll:
            return {"alert", "may join all applications: " + event.text};
        case AlertEvent::stopped:
            return {"alert", "is ended as [" + event.text + "]: " + event.field(Field::message)};
    }
    return {};
}

EventEntry entryOf(WindowEvent kind, const Happening& event) {
    switch (kind) {
        case WindowEvent::shown:
            return {"window", event.text + " is shown"};
        case WindowEvent::hidden:
            return {"window", event.text + " is hidden"};
        case WindowEvent::orderedFront:
            return {"window", event.text + " lies above all others"};
        case WindowEvent::key:
            return {"window", event.text + " is in front"};
        case WindowEvent::style:
            return {"window", event.text + " has the style " + styleNames(event.field(Field::mask))};
        case WindowEvent::centered:
            return {"window", event.text + " is centred"};
        case WindowEvent::closed:
            return {"window", event.text + " is closed by the participant"};
    }
    return {};
}

EventEntry entryOf(ViewEvent kind, const Happening& event) {
    switch (kind) {
        case ViewEvent::shown:
            return {"view", event.text + " is shown"};
        case ViewEvent::hidden:
            return {"view", event.text + " is hidden"};
    }
    return {};
}

EventEntry entryOf(ControlEvent kind, const Happening& event) {
    switch (kind) {
        case ControlEvent::text:
            return {"text", event.text + ": " + inQuotes(event.field(Field::value))};
        case ControlEvent::enabled:
            return {"control", event.text + " is enabled"};
        case ControlEvent::disabled:
            return {"control", event.text + " is disabled"};
    }
    return {};
}

EventEntry entryOf(StatusItemEvent kind, const Happening& event) {
    switch (kind) {
        case StatusItemEvent::installed:
            return {"status item", "is installed"};
        case StatusItemEvent::title:
            return {"status item", "is titled " + event.text};
        case StatusItemEvent::menu:
            return {"status item", "has the menu", event.all(Field::item)};
        case StatusItemEvent::removed:
            return {"status item", "is removed: " + event.text};
    }
    return {};
}

EventEntry entryOf(MenuEvent kind, const Happening& event) {
    switch (kind) {
        case MenuEvent::opened:
            return {"menu", "opened: " + titleOf(event.text)};
        case MenuEvent::closed: {
            const auto chosen =
                event.has(Field::chosen) ? ", chosen: " + event.field(Field::chosen) : ", nothing chosen";
            return {"menu", "closed: " + titleOf(event.text) + chosen};
        }
    }
    return {};
}

EventEntry entryOf(PermissionEvent kind, const Happening& event) {
    switch (kind) {
        case PermissionEvent::accessibilityPrompt:
            return {"permission", "the system asks for accessibility"};
        case PermissionEvent::requested:
            return {"permission", event.text + " is requested"};
        case PermissionEvent::prompt:
            return {"permission", "the system asks for " + event.text};
        case PermissionEvent::answered:
            return {"permission", event.text + (event.field(Field::granted) == "yes" ? " is granted" : " is refused")};
    }
    return {};
}

}  // namespace vantrel::rehearsal
