#include "rehearsal/playing/DesktopPerformer.h"

#include <algorithm>
#include <array>
#include <variant>

#include "platform/virtual/scheduler/NumberText.h"

namespace vantrel::rehearsal {

void DesktopPerformer::perform(const DesktopAction& action) {
    std::visit([this](const auto& what) { (*this)(what); }, action);
}

ProcessIdentifier DesktopPerformer::launch(const OtherApplication& application) {
    virtualmac::ApplicationDescription description{application.name, application.bundleIdentifier};
    application.behaviour.applyTo(description);
    const auto process = mac_.applications().add(description);
    if (application.window) mac_.applications().openWindow(process, {application.name, *application.window});
    return process;
}

void DesktopPerformer::operator()(const PressKeys& action) {
    mac_.participant().pressKey(action.key, action.times);
}

void DesktopPerformer::operator()(const ShowApplication& action) {
    if (!action.start || (!action.name.empty() && isRunning(action.name)))
        return mac_.participant().bringToFront(action.name);
    const bool isNamed = !action.name.empty();
    note("participant", "starts " + (isNamed ? action.name : "an application without a name"));
    const auto process = launch(*action.start);
    // An application with a window has already come to the front.
    if (action.start->window) return;
    if (isNamed) return mac_.participant().bringToFront(action.name);
    mac_.processes().find(process)->comeToFront();
}

void DesktopPerformer::operator()(const DoToApplication& action) {
    auto& participant = mac_.participant();
    switch (action.what) {
        case DoToApplication::What::quit:
            return participant.quit(action.application);
        case DoToApplication::What::kill:
            return participant.kill(action.application);
        case DoToApplication::What::minimise:
            return participant.minimiseWindowOf(action.application);
        case DoToApplication::What::restore:
            return participant.restoreWindowOf(action.application);
        case DoToApplication::What::close:
            return participant.closeWindowOf(action.application);
        case DoToApplication::What::toggleFullScreen:
            return participant.toggleFullScreenOf(action.application);
        case DoToApplication::What::hideOthers:
            return participant.hideOthersOf(action.application);
    }
}

void DesktopPerformer::operator()(const MoveWindow& action) {
    mac_.participant().moveWindowOf(action.application, action.origin);
}

void DesktopPerformer::operator()(const ResizeWindow& action) {
    mac_.participant().resizeWindowOf(action.application, action.size);
}

void DesktopPerformer::operator()(const OpenWindow& action) {
    mac_.participant().openWindowOf(action.application, action.window);
}

void DesktopPerformer::operator()(const Swipe& action) {
    using Direction = virtualmac::VirtualSpaces::Direction;
    mac_.participant().swipe(action.left ? Direction::left : Direction::right);
}

void DesktopPerformer::operator()(const ArrangeDisplay& action) {
    const auto& [name, frame] = action.display;
    if (!mac_.screens().setFrame(name, frame)) note("ignored", "display " + name + " is arranged: there is none");
}

void DesktopPerformer::operator()(const MirrorDisplay& action) {
    auto& screens = mac_.screens();
    if (action.mirrors) {
        if (screens.displays().screens.size() < 2)
            return note("ignored", "display " + action.name + " mirrors: there is no other");
        if (!screens.mirror(action.name)) note("ignored", "display " + action.name + " mirrors: there is none");
    } else if (!screens.unmirror(action.name)) {
        note("ignored", "display " + action.name + " stops mirroring: it does not mirror");
    }
}

void DesktopPerformer::operator()(const SetDisplayNotices& action) {
    mac_.screens().setNotices(action.count, action.every);
    note("displays", "changes are noticed " + std::to_string(action.count) + " times, every " +
                         virtualmac::shortest(action.every) + " s");
}

void DesktopPerformer::operator()(const CloseCover& action) {
    const auto frame = shownCover(action.display);
    if (!frame) return note("ignored", "the cover of display " + action.display + " is closed: there is none");
    note("fault", "the cover of display " + action.display + " is closed");
    mac_.overlays().closeShown(*frame);
}

void DesktopPerformer::operator()(const SetTaps& action) {
    mac_.keyboard().refuse(action.work ? 0 : virtualmac::VirtualKeyboardTaps::always);
    note("fault", action.work ? "keyboard taps are given again" : "no keyboard tap is given");
}

void DesktopPerformer::operator()(const SetSecureInput& action) {
    mac_.keyboard().setSecureInput(action.on);
    note("keyboard", action.on ? "a password field takes it" : "no password field has it");
}

void DesktopPerformer::operator()(const SetWindowList& action) {
    mac_.windowList().setFailing(!action.works);
    note("fault", action.works ? "the window list can be read again" : "the window list cannot be read");
}

void DesktopPerformer::operator()(const FailElements& action) {
    constexpr std::array names{"reads", "writes", "actions"};
    mac_.accessibility().faults().fail(action.operation, action.name, action.error, action.times);
    std::string text = std::string(names.at(static_cast<std::size_t>(action.operation))) + " of " + action.name +
                       " give " + std::to_string(action.error);
    if (action.times != virtualmac::AccessibilityFaults::always) text += ", times: " + std::to_string(action.times);
    note("fault", text);
}

void DesktopPerformer::operator()(const MendElements&) {
    mac_.accessibility().faults().clear();
    note("fault", "elements work as usual");
}

void DesktopPerformer::operator()(const SilenceApplication& action) {
    if (!isRunning(action.application))
        return note("ignored",
                    action.application + (action.silent ? " falls silent" : " answers again") + ": it is not running");
    for (const auto& process : mac_.processes().all()) {
        if (process->description().name == action.application)
            mac_.accessibility().setUnresponsive(process->processIdentifier(), action.silent);
    }
    note("fault", action.application + (action.silent ? " does not answer" : " answers again"));
}

void DesktopPerformer::operator()(const HangClient& action) {
    note("fault", "the client's main thread hangs for " + virtualmac::shortest(action.seconds) + " s");
    mac_.postToMain([this, seconds = action.seconds] { mac_.computer().threads.sleep(seconds); });
}

std::optional<Rect> DesktopPerformer::shownCover(const std::string& display) const {
    for (const auto& screen : mac_.screens().displays().screens) {
        if (screen.localizedName != display) continue;
        for (const auto& cover : mac_.overlays().all()) {
            if (cover.visible && cover.description.frame == screen.frame) return screen.frame;
        }
    }
    return std::nullopt;
}

bool DesktopPerformer::isRunning(const std::string& application) const {
    const auto processes = mac_.processes().all();
    return std::any_of(processes.begin(), processes.end(), [&application](const auto& process) {
        return process->isListed() && process->description().name == application;
    });
}

void DesktopPerformer::note(const char* kind, const std::string& text) {
    transcript_.add(mac_.now(), kind, text);
}

}  // namespace vantrel::rehearsal
