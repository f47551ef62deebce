#include "platform/virtual/VirtualScreens.h"

#include <algorithm>
#include <utility>

#include "platform/virtual/Numbers.h"

namespace vantrel::virtualmac {

struct VirtualScreens::Observer {
    Block block;
};

class VirtualScreens::Handle final : public Observation {
  public:
    explicit Handle(std::shared_ptr<Observer> observer) : observer_(std::move(observer)) {}

  private:
    std::shared_ptr<Observer> observer_;
};

std::vector<Screen> VirtualScreens::screens() const {
    engine_.mainThreadCall("Screens.screens");
    return displays().screens;
}

std::optional<Screen> VirtualScreens::mainScreen() const {
    engine_.mainThreadCall("Screens.mainScreen");
    const Displays all = displays();
    if (all.screens.empty()) return std::nullopt;
    return all.screens[std::min(all.main, all.screens.size() - 1)];
}

bool VirtualScreens::screensHaveSeparateSpaces() const {
    engine_.mainThreadCall("Screens.screensHaveSeparateSpaces");
    return displays().haveSeparateSpaces;
}

std::unique_ptr<Observation> VirtualScreens::observeScreenParametersDidChange(Block block) {
    engine_.mainThreadCall("Screens.observeScreenParametersDidChange");
    auto observer = std::make_shared<Observer>(Observer{std::move(block)});
    const std::lock_guard guard(mutex_);
    observers_.push_back(observer);
    return std::make_unique<Handle>(std::move(observer));
}

Displays VirtualScreens::displays() const {
    const std::lock_guard guard(mutex_);
    return displays_;
}

void VirtualScreens::setUp(Displays displays) {
    const std::lock_guard guard(mutex_);
    displays_ = std::move(displays);
}

void VirtualScreens::change(Displays displays) {
    Journal::Fields fields;
    for (const auto& screen : displays.screens) {
        fields.emplace_back("screen", screen.localizedName + " " + describe(screen.frame));
    }
    std::vector<std::weak_ptr<Observer>> told;
    {
        const std::lock_guard guard(mutex_);
        displays_ = std::move(displays);
        std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
        told = observers_;
    }
    engine_.journal.emit("screens-changed", {}, std::move(fields));
    for (auto& observer : told) {
        engine_.mainLoop.async(engine_.scheduler.now(), [observer = std::move(observer)] {
            if (const auto living = observer.lock()) living->block();
        });
    }
}

void VirtualScreens::plug(Screen screen) {
    Displays next = displays();
    next.screens.push_back(std::move(screen));
    change(std::move(next));
}

bool VirtualScreens::unplug(std::string_view name) {
    Displays next = displays();
    const auto found = std::find_if(next.screens.begin(), next.screens.end(),
                                    [name](const Screen& screen) { return screen.localizedName == name; });
    if (found == next.screens.end()) return false;
    const auto index = static_cast<std::size_t>(found - next.screens.begin());
    next.screens.erase(found);
    if (next.main == index) {
        next.main = 0;
    } else if (next.main > index) {
        --next.main;
    }
    change(std::move(next));
    return true;
}

std::size_t VirtualScreens::observers() const {
    const std::lock_guard guard(mutex_);
    return static_cast<std::size_t>(
        std::count_if(observers_.begin(), observers_.end(), [](const auto& observer) { return !observer.expired(); }));
}

}  // namespace vantrel::virtualmac
