#include "platform/virtual/ui/VirtualStatusBar.h"

#include <functional>
#include <utility>

namespace vantrel::virtualmac {

namespace {

std::string described(const MenuItem& item) {
    if (item.kind == MenuItem::Kind::separator) return "-";
    return item.isAvailable() ? item.title : "[" + item.title + "]";
}

/// Entries that do what they do through `run`.
Menu through(const std::function<Block(const Block&)>& run, const Menu& menu) {
    Menu made = menu;
    for (MenuItem& item : made.items) {
        if (item.target) item.target = run(item.target);
        item.submenu = through(run, item.submenu);
    }
    return made;
}

}  // namespace

class VirtualStatusBar::Item final : public StatusItem {
  public:
    Item(VirtualStatusBar& bar, std::shared_ptr<State> state, Acts acts)
        : bar_(bar), state_(std::move(state)), acts_(acts) {}
    ~Item() override { remove(); }
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;

    void setButtonTitle(const std::string& title) override {
        {
            const std::lock_guard guard(bar_.mutex_);
            state_->title = title;
        }
        bar_.engine_.journal.emit({StatusItemEvent::title, title});
    }

    void setMenu(const Menu& menu) override {
        Fields fields;
        for (const MenuItem& item : menu.items) fields.emplace_back(Field::item, described(item));
        Menu before = acts_ == Acts::fromTheRunLoop ? fromTheRunLoop(menu) : menu;
        {
            const std::lock_guard guard(bar_.mutex_);
            std::swap(state_->menu, before);
        }
        bar_.engine_.journal.emit({StatusItemEvent::menu, {}, std::move(fields)});
    }

    /// Idempotent.
    void remove() {
        menuSet_.reset();
        {
            const std::lock_guard guard(bar_.mutex_);
            if (std::erase(bar_.items_, state_) == 0) return;
        }
        bar_.menus_.cancel(state_->number);
        bar_.engine_.journal.emit({StatusItemEvent::removed, state_->title});
    }

  private:
    /// An entry of a menu that is gone by then does nothing.
    Menu fromTheRunLoop(const Menu& menu) {
        menuSet_ = std::make_shared<const bool>(true);
        const auto run = [&loop = bar_.engine_.mainLoop, set = std::weak_ptr(menuSet_)](const Block& target) {
            return [&loop, set, target] {
                loop.postOwn([set, target] {
                    if (!set.expired()) target();
                });
            };
        };
        return through(run, menu);
    }

    VirtualStatusBar& bar_;
    std::shared_ptr<State> state_;
    const Acts acts_;
    /// As long as the menu that was set last. Main thread.
    std::shared_ptr<const bool> menuSet_;
};

std::unique_ptr<StatusItem> VirtualStatusBar::statusItem(double) {
    return make(Acts::fromTheRunLoop);
}

std::unique_ptr<StatusItem> VirtualStatusBar::systemItem() {
    return make(Acts::whereTheChoiceIsDelivered);
}

std::unique_ptr<StatusItem> VirtualStatusBar::make(Acts acts) {
    auto state = std::make_shared<State>();
    {
        const std::lock_guard guard(mutex_);
        state->number = ++made_;
        items_.push_back(state);
    }
    engine_.journal.emit({StatusItemEvent::installed});
    return std::make_unique<Item>(*this, std::move(state), acts);
}

void VirtualStatusBar::removeStatusItem(StatusItem& item) {
    if (auto* own = dynamic_cast<Item*>(&item)) own->remove();
}

std::vector<VirtualStatusBar::State> VirtualStatusBar::items() const {
    const std::lock_guard guard(mutex_);
    std::vector<State> states;
    states.reserve(items_.size());
    for (const auto& state : items_) states.push_back(*state);
    return states;
}

}  // namespace vantrel::virtualmac
