#include "platform/virtual/participant/KeyDelivery.h"

#include <string>
#include <utility>

namespace vantrel::virtualmac {

namespace {

constexpr std::int64_t tab = 48;
constexpr std::int64_t space = 49;
constexpr std::int64_t leftArrow = 123;
constexpr std::int64_t rightArrow = 124;
constexpr const char* spotlight = "Spotlight";

bool has(const KeyStroke& key, std::uint64_t flag) {
    return (key.flags & flag) != 0;
}

}  // namespace

bool KeyDelivery::deliver(const KeyStroke& key) {
    const Applications applications = front();
    Block systemAction = shortcut(key, applications);
    const auto receiver = systemAction || applications.empty() ? nullptr : applications.front();
    {
        const std::lock_guard guard(mutex_);
        received_.push_back({key, receiver ? receiver->processIdentifier() : 0});
    }
    Fields fields{{Field::code, std::to_string(key.keyCode)}, {Field::flags, std::to_string(key.flags)}};
    if (receiver) fields.emplace_back(Field::application, receiver->description().name);
    dependencies_.engine.journal.emit({KeyboardEvent::delivered, key.text(), std::move(fields)});
    if (systemAction) {
        systemAction();
    } else if (receiver) {
        if (receiver->processIdentifier() == dependencies_.processes.ownProcess()) return false;
        act(key, applications);
    }
    return true;
}

std::vector<KeyDelivery::Received> KeyDelivery::received() const {
    const std::lock_guard guard(mutex_);
    return received_;
}

KeyDelivery::Applications KeyDelivery::front() const {
    Applications found;
    for (const FrontCandidate& candidate : dependencies_.desktop.front()) {
        if (const auto process = dependencies_.processes.find(candidate.process); process && process->isListed()) {
            found.push_back(process);
        }
    }
    return found;
}

Block KeyDelivery::shortcut(const KeyStroke& key, const Applications& applications) {
    using Direction = VirtualSpaces::Direction;
    if (has(key, KeyStroke::command) && key.keyCode == tab) {
        return [applications] {
            if (applications.size() > 1) applications[1]->comeToFront();
        };
    }
    if (has(key, KeyStroke::command) && key.keyCode == space) return [this] { showSpotlight(); };
    if (has(key, KeyStroke::command) || !has(key, KeyStroke::control)) return nullptr;
    if (key.keyCode == leftArrow) return [this] { dependencies_.spaces.swipe(Direction::left); };
    if (key.keyCode == rightArrow) return [this] { dependencies_.spaces.swipe(Direction::right); };
    return nullptr;
}

void KeyDelivery::act(const KeyStroke& key, const Applications& applications) {
    if (!has(key, KeyStroke::command)) return;
    VirtualProcess& application = *applications.front();
    const ApplicationDescription& description = application.description();
    const char letter = key.letter();
    if (has(key, KeyStroke::control) && letter != 'f') return;
    if (letter == 'q' && !description.ignoresTerminate) application.exitAfter(description.exitDelay);
    if (letter == 'h') hide(applications);
    const auto windows = dependencies_.desktop.windowsOf(application.processIdentifier());
    if (windows.empty()) return;
    const AppWindow& window = windows.front();
    if (letter == 'w' && window.hasCloseButton && !window.refusesToClose) dependencies_.desktop.close(window.number);
    if (letter == 'm') dependencies_.desktop.setMinimised(window.number, true);
    if (letter == 'f' && has(key, KeyStroke::control)) {
        dependencies_.desktop.setFullScreen(window.number, !window.fullScreen);
    }
}

void KeyDelivery::hide(const Applications& applications) {
    dependencies_.desktop.setHidden(applications.front()->processIdentifier(), true);
    if (applications.size() > 1) applications[1]->comeToFront();
}

void KeyDelivery::showSpotlight() {
    for (const auto& process : dependencies_.processes.all()) {
        if (process->isListed() && process->description().name == spotlight) return process->comeToFront();
    }
    dependencies_.processes.find(dependencies_.processes.add({spotlight, "com.apple.Spotlight"}))->comeToFront();
}

}  // namespace vantrel::virtualmac
