#include "rehearsal/transcript/EventLines.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ui/Window.h"
#include "rehearsal/transcript/EventEntry.h"
#include "rehearsal/transcript/InputLines.h"
#include "rehearsal/transcript/ParticipantLines.h"
#include "rehearsal/transcript/PrintableText.h"

namespace vantrel::rehearsal {
namespace {

using virtualmac::Event;

using Entry = EventEntry;
using Writer = EventWriter;

Entry request(const Event& event) {
    Entry entry{"request", event.text, allFields(event, "header")};
    if (hasField(event, "body")) entry.more.push_back(printableBody(event.field("body")));
    return entry;
}

Entry reply(const Event& event) {
    if (hasField(event, "error")) return {"reply", "error from " + event.text, {event.field("error")}};
    Entry entry{"reply", (hasField(event, "status") ? event.field("status") : "not HTTP") + " from " + event.text, {}};
    if (hasField(event, "body")) entry.more.push_back(printableBody(event.field("body")));
    return entry;
}

Entry alert(const Event& event) {
    Entry entry{"alert", event.field("style") + ": " + event.text, {}};
    if (!event.field("information").empty()) entry.more.push_back(event.field("information"));
    std::string buttons;
    for (const auto& button : allFields(event, "button")) buttons += (buttons.empty() ? "[" : " [") + button + "]";
    entry.more.push_back(buttons);
    return entry;
}

Entry style(const Event& event) {
    const auto mask = std::strtoul(event.field("mask").c_str(), nullptr, 10);
    std::string names;
    const auto add = [&](unsigned bit, const char* name) {
        if ((mask & bit) != 0) names += (names.empty() ? "" : ", ") + std::string(name);
    };
    add(windowTitled, "titled");
    add(windowClosable, "closable");
    add(windowMiniaturizable, "miniaturizable");
    return {"window", event.text + " has the style " + (names.empty() ? "none" : names), {}};
}

Entry menuClosed(const Event& event) {
    const auto chosen = hasField(event, "chosen") ? ", chosen: " + event.field("chosen") : ", nothing chosen";
    return {"menu", "closed: " + titleOf(event.text) + chosen, {}};
}

Entry mainMenu(const Event& event) {
    Entry entry{"main menu", "", {}};
    for (std::size_t start = 0; start <= event.text.size();) {
        const auto end = std::min(event.text.find(',', start), event.text.size());
        const auto title = event.text.substr(start, end - start);
        entry.text += (start == 0 ? "" : ", ") + titleOf(title);
        start = end + 1;
    }
    return entry;
}

/// `before` + the event's text + `after`.
Writer plain(std::string kind, std::string before, std::string after = {}) {
    return [kind = std::move(kind), before = std::move(before), after = std::move(after)](const Event& event) {
        return Entry{kind, before + event.text + after, {}};
    };
}

/// The event's text, and the fields of that name below it.
Writer listed(std::string kind, std::string text, std::string field) {
    return [kind = std::move(kind), text = std::move(text), field = std::move(field)](const Event& event) {
        return Entry{kind, text, allFields(event, field)};
    };
}

Writer process(std::string what) {
    return [what = std::move(what)](const Event& event) {
        return Entry{"application", event.text + " (" + event.field("pid") + ") " + what, {}};
    };
}

std::string frameText(const Event& event) {
    const auto frame = event.field("frame");
    return frame.empty() ? "" : " at " + frame;
}

/// A window of another application.
Writer foreignWindow(std::string what) {
    return [what = std::move(what)](const Event& event) {
        return Entry{
            "app window", "#" + event.field("number") + " " + inQuotes(event.text) + " " + what + frameText(event), {}};
    };
}

Entry fullScreen(const Event& event) {
    return foreignWindow(event.field("on") == "yes" ? "is in full screen" : "has left full screen")(event);
}

Entry processStarted(const Event& event) {
    Entry entry{"process", event.text + " (" + event.field("pid") + ") is started", {}};
    for (const auto& [name, value] : event.fields) {
        if (name == "argument") entry.more.push_back("argument: " + value);
    }
    return entry;
}

Entry accessibility(const Event& event) {
    const bool isWrite = event.kind == "accessibility-set";
    std::string text = event.text + (isWrite ? " = " + event.field("value") : "") + " of process " + event.field("pid");
    if (!event.field("window").empty()) text += ", window #" + event.field("window");
    if (!event.field("error").empty()) text += ": error " + event.field("error");
    return Entry{"element", text, {}};
}

const EventWriters& writers() {
    static const EventWriters table = {
        {"log", plain("log", "")},
        {"request", request},
        {"redirect", plain("redirect", "")},
        {"reply", reply},
        {"alert-shown", alert},
        {"alert-answered",
         [](const Event& event) {
             return Entry{"answer", "[" + event.text + "] to: " + event.field("message"), {}};
         }},
        {"window-shown", plain("window", "", " is shown")},
        {"window-hidden", plain("window", "", " is hidden")},
        {"window-key", plain("window", "", " is in front")},
        {"window-centered", plain("window", "", " is centred")},
        {"window-closed", plain("window", "", " is closed by the participant")},
        {"window-style", style},
        {"view-shown", plain("view", "", " is shown")},
        {"view-hidden", plain("view", "", " is hidden")},
        {"text",
         [](const Event& event) {
             return Entry{"text", event.text + ": " + inQuotes(event.field("value")), {}};
         }},
        {"enabled", plain("control", "", " is enabled")},
        {"disabled", plain("control", "", " is disabled")},
        {"main-menu", mainMenu},
        {"activation-policy", plain("client", "has activation policy ")},
        {"activate", plain("client", "asks to come to the front")},
        {"terminate-asked", plain("client", "is asked to quit")},
        {"terminate-refused", plain("client", "refuses to quit")},
        {"terminated", plain("client", "quits")},
        {"accessibility-prompt", plain("permission", "the system asks for accessibility")},
        {"permission-requested", plain("permission", "", " is requested")},
        {"permission-prompt", plain("permission", "the system asks for ")},
        {"permission-answered",
         [](const Event& event) {
             return Entry{
                 "permission", event.text + (event.field("granted") == "yes" ? " is granted" : " is refused"), {}};
         }},
        {"url-opened",
         [](const Event& event) {
             return Entry{"url", (event.field("opened") == "yes" ? "opened: " : "not opened: ") + event.text, {}};
         }},
        {"status-item-installed", plain("status item", "is installed")},
        {"status-item-title", plain("status item", "is titled ")},
        {"status-item-menu", listed("status item", "has the menu", "item")},
        {"status-item-removed", plain("status item", "is removed: ")},
        {"menu-opened",
         [](const Event& event) {
             return Entry{"menu", "opened: " + titleOf(event.text), {}};
         }},
        {"menu-closed", menuClosed},
        {"setting-saved",
         [](const Event& event) {
             return Entry{"setting", event.text + " = " + inQuotes(event.field("value")), {}};
         }},
        {"screens-changed", listed("displays", "are now", "screen")},
        {"process-started", processStarted},
        {"process-exited",
         [](const Event& event) {
             return Entry{"process", event.text + " (" + event.field("pid") + ") exits", {}};
         }},
        {"signal",
         [](const Event& event) {
             return Entry{"process", "(" + event.field("pid") + ") is sent signal " + event.text, {}};
         }},
        {"application-frontmost", process("is in front")},
        {"application-opened",
         [](const Event& event) {
             return Entry{"application", event.field("application") + " is asked to open " + event.text, {}};
         }},
        {"app-window-opened", foreignWindow("opens")},
        {"app-window-closed", foreignWindow("closes")},
        {"app-window-moved", foreignWindow("is now")},
        {"app-window-minimised", foreignWindow("is minimised")},
        {"app-window-restored", foreignWindow("is restored")},
        {"app-window-title", foreignWindow("has a new title")},
        {"app-window-fullscreen", fullScreen},
        {"space-changed",
         [](const Event& event) {
             return Entry{"space", (event.text.empty() ? "" : event.text + ": ") + event.field("space"), {}};
         }},
        {"accessibility-set", accessibility},
        {"accessibility-action", accessibility},
        {"application-started", process("starts")},
        {"application-exited", process("exits")},
        {"application-activate", process("is asked to come to the front")},
        {"application-terminate", process("is asked to quit")},
        {"application-force-terminate", process("is killed")},
        {"lid", plain("lid", "is closed for ", " s")},
        {"participant", participantEntry},
    };
    return table;
}

Entry unknown(const Event& event) {
    Entry entry{event.kind, event.text, {}};
    for (const auto& [name, value] : event.fields) entry.more.push_back(name + ": " + value);
    return entry;
}

const Writer* find(const EventWriters& table, const std::string& kind) {
    const auto found = table.find(kind);
    return found == table.end() ? nullptr : &found->second;
}

}  // namespace

void write(const Event& event, Transcript& transcript) {
    const auto* writer = find(writers(), event.kind);
    if (writer == nullptr) writer = find(inputWriters(), event.kind);
    const auto entry = writer == nullptr ? unknown(event) : (*writer)(event);
    transcript.add(event.time, entry.kind, entry.text, entry.more);
}

}  // namespace vantrel::rehearsal
