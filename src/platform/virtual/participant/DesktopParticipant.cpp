#include "platform/virtual/participant/DesktopParticipant.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/virtual/scheduler/NumberText.h"

namespace vantrel::virtualmac {

namespace {

bool isVisible(const AppWindow& window) {
    return !window.minimised && !window.hidden;
}

bool isMovable(const AppWindow& window) {
    return isVisible(window) && !window.fullScreen && !window.inTransition;
}

struct ModifierKey {
    std::int64_t code;
    std::uint64_t flag;
};

constexpr std::array modifierKeys = {ModifierKey{55, KeyStroke::command}, ModifierKey{59, KeyStroke::control},
                                     ModifierKey{58, KeyStroke::option}, ModifierKey{56, KeyStroke::shift}};

}  // namespace

void DesktopParticipant::perform(const Happening& what, const Attempt& attempt) {
    bool told = false;
    const auto heard = [&] {
        told = true;
        dependencies_.engine.journal.emit(what);
    };
    const std::string ignored = attempt(heard);
    if (told) return;
    Happening all = what;
    if (!ignored.empty()) all.fields.emplace_back(Field::ignored, ignored);
    dependencies_.engine.journal.emit(std::move(all));
}

void DesktopParticipant::bringClientToFront() {
    const auto& processes = dependencies_.processes;
    dependencies_.desktop.bringToFront(processes.find(processes.ownProcess())->asCandidate());
}

void DesktopParticipant::bringToFront(ProcessIdentifier process) {
    dependencies_.processes.find(process)->comeToFront();
}

void DesktopParticipant::inWorld(Happening what, Attempt attempt) {
    dependencies_.engine.world.after(
        0, [this, what = std::move(what), attempt = std::move(attempt)] { perform(what, attempt); });
}

std::shared_ptr<VirtualProcess> DesktopParticipant::running(
    const std::string& application, const std::function<bool(const VirtualProcess&)>& counts) const {
    const auto all = dependencies_.processes.all();
    const auto found = std::find_if(all.begin(), all.end(), [&](const auto& process) {
        return process->isListed() && process->description().name == application && counts(*process);
    });
    return found == all.end() ? nullptr : *found;
}

std::shared_ptr<VirtualProcess> DesktopParticipant::runningOther(const std::string& application) const {
    const ProcessIdentifier own = dependencies_.processes.ownProcess();
    return running(application, [own](const VirtualProcess& process) { return process.processIdentifier() != own; });
}

void DesktopParticipant::withWindow(const Happening& what, const std::function<bool(const AppWindow&)>& pick,
                                    WindowAttempt attempt) {
    inWorld(what,
            [this, application = what.text, pick, attempt = std::move(attempt)](const auto& heard) -> std::string {
                const auto process = runningOther(application);
                if (!process) return "it does not run";
                const auto windows = dependencies_.desktop.windowsOf(process->processIdentifier());
                const auto found = std::find_if(windows.begin(), windows.end(), pick);
                if (found == windows.end()) return "it has no such window";
                heard();
                attempt(*found);
                return {};
            });
}

void DesktopParticipant::openApplication(const std::string& executablePath) {
    inWorld({DesktopDeed::openApplication, executablePath}, [this, executablePath](const auto& heard) -> std::string {
        if (!dependencies_.processes.isExecutable(executablePath)) return "it cannot be started";
        heard();
        dependencies_.processes.start(executablePath);
        return {};
    });
}

void DesktopParticipant::bringToFront(const std::string& application) {
    inWorld({DesktopDeed::bringToFront, application}, [this, application](const auto& heard) -> std::string {
        const auto process = running(application, [](const VirtualProcess&) { return true; });
        if (!process) return "it does not run";
        heard();
        process->comeToFront();
        return {};
    });
}

void DesktopParticipant::quit(const std::string& application) {
    inWorld({DesktopDeed::quit, application}, [this, application](const auto& heard) -> std::string {
        const auto process = runningOther(application);
        if (!process) return "it does not run";
        if (process->description().ignoresTerminate) return "it goes on";
        heard();
        process->exitAfter(process->description().exitDelay);
        return {};
    });
}

void DesktopParticipant::kill(const std::string& application) {
    inWorld({DesktopDeed::kill, application}, [this, application](const auto& heard) -> std::string {
        const auto process = runningOther(application);
        if (!process) return "it does not run";
        heard();
        constexpr int signal = 9;
        process->receive(signal);
        return {};
    });
}

void DesktopParticipant::moveWindowOf(const std::string& application, Point origin) {
    withWindow({DesktopDeed::moveWindow, application, {{Field::value, shortest(origin.x) + " " + shortest(origin.y)}}},
               isMovable, [this, origin](const AppWindow& window) {
                   bringToFront(window.owner);
                   dependencies_.desktop.move(window.number, origin);
               });
}

void DesktopParticipant::resizeWindowOf(const std::string& application, Size size) {
    withWindow(
        {DesktopDeed::resizeWindow, application, {{Field::value, shortest(size.width) + " " + shortest(size.height)}}},
        isMovable, [this, size](const AppWindow& window) {
            bringToFront(window.owner);
            dependencies_.desktop.resize(window.number, size);
        });
}

void DesktopParticipant::minimiseWindowOf(const std::string& application) {
    withWindow({DesktopDeed::minimiseWindow, application}, isMovable,
               [this](const AppWindow& window) { dependencies_.desktop.setMinimised(window.number, true); });
}

void DesktopParticipant::restoreWindowOf(const std::string& application) {
    withWindow(
        {DesktopDeed::restoreWindow, application}, [](const AppWindow& window) { return window.minimised; },
        [this](const AppWindow& window) {
            dependencies_.desktop.setMinimised(window.number, false);
            bringToFront(window.owner);
        });
}

void DesktopParticipant::closeWindowOf(const std::string& application) {
    withWindow(
        {DesktopDeed::closeWindow, application},
        [](const AppWindow& window) { return isVisible(window) && window.hasCloseButton; },
        [this](const AppWindow& window) {
            if (!window.refusesToClose) dependencies_.desktop.close(window.number);
        });
}

void DesktopParticipant::toggleFullScreenOf(const std::string& application) {
    withWindow({DesktopDeed::toggleFullScreen, application}, isVisible, [this](const AppWindow& window) {
        bringToFront(window.owner);
        dependencies_.desktop.setFullScreen(window.number, !window.fullScreen);
    });
}

void DesktopParticipant::hideOthersOf(const std::string& application) {
    inWorld({DesktopDeed::hideOthers, application}, [this, application](const auto& heard) -> std::string {
        const auto process = runningOther(application);
        if (!process) return "it does not run";
        heard();
        for (const auto& other : dependencies_.processes.all()) {
            if (other->isListed() && other != process) {
                dependencies_.desktop.setHidden(other->processIdentifier(), true);
            }
        }
        return {};
    });
}

void DesktopParticipant::swipe(VirtualSpaces::Direction direction) {
    const bool left = direction == VirtualSpaces::Direction::left;
    inWorld({left ? DesktopDeed::swipeLeft : DesktopDeed::swipeRight},
            [this, direction, left](const auto& heard) -> std::string {
                const std::size_t place = dependencies_.spaces.current();
                if (left ? place == 0 : place + 1 == dependencies_.spaces.count())
                    return "there is no Space beside this one";
                heard();
                dependencies_.spaces.swipe(direction);
                return {};
            });
}

void DesktopParticipant::openWindowOf(const std::string& application, const NewWindow& window) {
    inWorld({DesktopDeed::openWindow, application}, [this, application, window](const auto& heard) -> std::string {
        const auto process = runningOther(application);
        if (!process) return "it does not run";
        heard();
        dependencies_.processes.openWindow(process->processIdentifier(), window);
        return {};
    });
}

void DesktopParticipant::changeFlags(std::uint64_t flags, bool down) {
    std::uint64_t held = down ? 0 : flags;
    for (const auto& [code, flag] : modifierKeys) {
        if ((flags & flag) == 0) continue;
        held ^= flag;
        dependencies_.keyboard.press({KeyEventType::flagsChanged, code, held}, nullptr);
    }
}

void DesktopParticipant::deliver(const KeyStroke& key) {
    if (!dependencies_.keys.deliver(key)) keyForClient(key);
}

void DesktopParticipant::pressKey(std::int64_t keyCode, std::uint64_t flags, int times) {
    const KeyStroke key{keyCode, flags};
    Fields fields;
    if (times > 1) fields.emplace_back(Field::times, std::to_string(times));
    inWorld({DesktopDeed::pressKey, key.text(), std::move(fields)},
            [this, key, times](const auto& heard) -> std::string {
                heard();
                changeFlags(key.flags, true);
                for (int press = 0; press < times; ++press) {
                    const auto down = [this, key, isLast = press + 1 == times] {
                        dependencies_.keyboard.press({KeyEventType::keyDown, key.keyCode, key.flags},
                                                     [this, key] { deliver(key); });
                        if (isLast) changeFlags(key.flags, false);
                    };
                    if (press == 0) {
                        down();
                    } else {
                        dependencies_.engine.world.after(press * repeatInterval, down);
                    }
                }
                return {};
            });
}

void DesktopParticipant::pressThrough(Happening what, const KeyStroke& key, Block passed) {
    inWorld(std::move(what), [this, key, passed = std::move(passed)](const auto& heard) -> std::string {
        heard();
        changeFlags(key.flags, true);
        dependencies_.keyboard.press({KeyEventType::keyDown, key.keyCode, key.flags}, passed);
        changeFlags(key.flags, false);
        return {};
    });
}

}  // namespace vantrel::virtualmac
