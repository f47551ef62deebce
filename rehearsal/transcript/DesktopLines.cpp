#include "rehearsal/transcript/DesktopLines.h"

namespace vantrel::rehearsal {
namespace {

using virtualmac::ApplicationEvent;
using virtualmac::AppWindowEvent;
using virtualmac::ElementEvent;
using virtualmac::Field;
using virtualmac::Happening;
using virtualmac::ProcessEvent;
using virtualmac::SystemEvent;

std::string withIdentifier(const Happening& event) {
    return (event.text.empty() ? "" : event.text + " ") + "(" + event.field(Field::pid) + ")";
}

EventEntry processStarted(const Happening& event) {
    EventEntry entry{"process", withIdentifier(event) + " is started"};
    for (const auto& argument : event.all(Field::argument)) entry.more.push_back("argument: " + argument);
    return entry;
}

std::string does(AppWindowEvent kind, const Happening& event) {
    switch (kind) {
        case AppWindowEvent::opened:
            return "opens";
        case AppWindowEvent::closed:
            return "closes";
        case AppWindowEvent::moved:
            return "is now";
        case AppWindowEvent::minimised:
            return "is minimised";
        case AppWindowEvent::restored:
            return "is restored";
        case AppWindowEvent::title:
            return "has a new title";
        case AppWindowEvent::fullScreen:
            return event.field(Field::on) == "yes" ? "is in full screen" : "has left full screen";
    }
    return {};
}

std::string does(ElementEvent kind, const Happening& event) {
    switch (kind) {
        case ElementEvent::set:
            return event.text + " = " + event.field(Field::value);
        case ElementEvent::action:
            return event.text;
    }
    return {};
}

/// Why what was asked of a process comes to nothing; empty if it does not.
std::string refusal(const Happening& event) {
    const auto error = event.field(Field::error);
    return error.empty() ? "" : ": " + error;
}

std::string inPlaceOf(const Happening& event) {
    const auto application = event.field(Field::application);
    return application.empty() ? "an application without a name" : application;
}

}  // namespace

EventEntry entryOf(SystemEvent kind, const Happening& event) {
    switch (kind) {
        case SystemEvent::screensChanged:
            return {"displays", "are now", event.all(Field::screen)};
        case SystemEvent::spaceChanged:
            return {"space", (event.text.empty() ? "" : event.text + ": ") + event.field(Field::space)};
        case SystemEvent::lid:
            return {"lid", "is closed for " + event.text + " s"};
    }
    return {};
}

EventEntry entryOf(ProcessEvent kind, const Happening& event) {
    switch (kind) {
        case ProcessEvent::started:
            return processStarted(event);
        case ProcessEvent::exited:
            return {"process", withIdentifier(event) + " exits"};
        case ProcessEvent::signal:
            return {"process", "(" + event.field(Field::pid) + ") is sent signal " + event.text + refusal(event)};
    }
    return {};
}

EventEntry entryOf(ApplicationEvent kind, const Happening& event) {
    switch (kind) {
        case ApplicationEvent::started:
            return {"application", withIdentifier(event) + " starts"};
        case ApplicationEvent::exited:
            return {"application", withIdentifier(event) + " exits"};
        case ApplicationEvent::activate:
            return {"application", withIdentifier(event) + " is asked to come to the front" + refusal(event)};
        case ApplicationEvent::activateFrom:
            return {"application", withIdentifier(event) + " is asked to come to the front in place of " +
                                       inPlaceOf(event) + refusal(event)};
        case ApplicationEvent::terminate:
            return {"application", withIdentifier(event) + " is asked to quit" + refusal(event)};
        case ApplicationEvent::forceTerminate:
            return {"application", withIdentifier(event) + " is killed" + refusal(event)};
        case ApplicationEvent::frontmost:
            return {"application", withIdentifier(event) + " is in front"};
        case ApplicationEvent::opened:
            return {"application", event.field(Field::application) + " is asked to open " + event.text};
    }
    return {};
}

EventEntry entryOf(AppWindowEvent kind, const Happening& event) {
    const auto window = "#" + event.field(Field::number) + " " + inQuotes(event.text) + " ";
    const auto frame = event.field(Field::frame);
    return {"app window", window + does(kind, event) + (frame.empty() ? "" : " at " + frame)};
}

EventEntry entryOf(ElementEvent kind, const Happening& event) {
    std::string text = does(kind, event) + " of process " + event.field(Field::pid);
    const auto window = event.field(Field::window);
    const auto error = event.field(Field::error);
    if (!window.empty()) text += ", window #" + window;
    if (!error.empty()) text += ": error " + error;
    return {"element", text};
}

}  // namespace vantrel::rehearsal
