#include "platform/virtual/ui/MenuTracking.h"

namespace vantrel::virtualmac {

const MenuItem* findItem(const Menu& menu, std::string_view title) {
    for (const MenuItem& item : menu.items) {
        if (item.kind == MenuItem::Kind::action && item.isAvailable() && item.title == title) return &item;
        if (item.kind != MenuItem::Kind::submenu) continue;
        if (const MenuItem* found = findItem(item.submenu, title)) return found;
    }
    return nullptr;
}

std::optional<MenuItem> MenuTracking::track(const std::string& title, const Menu& menu, std::uint64_t statusItem) {
    {
        const std::lock_guard guard(mutex_);
        open_ = menu;
        statusItem_ = statusItem;
        number_ = engine_.nextInFront();
        chosen_.reset();
    }
    engine_.journal.emit({MenuEvent::opened, title});
    engine_.mainLoop.run(MainRunLoop::Mode::tracking, [this] { return !isOpen(); });
    std::optional<MenuItem> chosen;
    {
        const std::lock_guard guard(mutex_);
        open_.reset();
        chosen.swap(chosen_);
    }
    Fields fields;
    if (chosen) fields.emplace_back(Field::chosen, chosen->title);
    engine_.journal.emit({MenuEvent::closed, title, std::move(fields)});
    return chosen;
}

bool MenuTracking::isOpen() const {
    const std::lock_guard guard(mutex_);
    return open_.has_value();
}

bool MenuTracking::isOpenAt(std::uint64_t statusItem) const {
    const std::lock_guard guard(mutex_);
    return open_ && statusItem_ == statusItem;
}

std::uint64_t MenuTracking::inFront() const {
    const std::lock_guard guard(mutex_);
    return open_ ? number_ : 0;
}

std::optional<Menu> MenuTracking::menu() const {
    const std::lock_guard guard(mutex_);
    return open_;
}

bool MenuTracking::choose(std::string_view itemTitle) {
    const std::lock_guard guard(mutex_);
    if (!open_) return false;
    const MenuItem* item = findItem(*open_, itemTitle);
    if (item == nullptr) return false;
    chosen_ = *item;
    open_.reset();
    return true;
}

bool MenuTracking::close() {
    const std::lock_guard guard(mutex_);
    if (!open_) return false;
    open_.reset();
    return true;
}

void MenuTracking::cancel(std::uint64_t statusItem) {
    const std::lock_guard guard(mutex_);
    if (open_ && statusItem_ == statusItem) open_.reset();
}

}  // namespace vantrel::virtualmac
