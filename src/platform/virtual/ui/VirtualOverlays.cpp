#include "platform/virtual/ui/VirtualOverlays.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "platform/virtual/scheduler/NumberText.h"

namespace vantrel::virtualmac {

class VirtualOverlays::Shown final : public Overlay {
  public:
    Shown(VirtualOverlays& overlays, std::shared_ptr<State> state) : overlays_(overlays), state_(std::move(state)) {}
    ~Shown() override {
        Shown::orderOut();
        Shown::close();
    }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;

    void setLevel(int level) override {
        {
            const std::lock_guard guard(overlays_.mutex_);
            if (isClosed_ || std::exchange(state_->description.level, level) == level) return;
        }
        tell(OverlayEvent::level, {{Field::level, std::to_string(level)}});
    }

    void orderFrontRegardless() override {
        const std::vector<AppWindow> windows = overlays_.desktop_.windows();
        bool wasVisible = false;
        bool wasUnder = false;
        {
            const std::lock_guard guard(overlays_.mutex_);
            if (isClosed_) return;
            for (const AppWindow& window : windows) {
                const bool before = state_->isUnder(window);
                state_->above = std::max(state_->above, window.number);
                wasUnder = wasUnder || (before && !state_->isUnder(window));
            }
            wasVisible = std::exchange(state_->visible, true);
        }
        if (!wasVisible) {
            tell(OverlayEvent::shown, whatIsSeen());
            return overlays_.tellWhichAreSeen();
        }
        if (wasUnder) tell(OverlayEvent::raised, {});
    }

    void orderOut() override {
        {
            const std::lock_guard guard(overlays_.mutex_);
            if (!std::exchange(state_->visible, false)) return;
            state_->isLetIn = true;
        }
        tell(OverlayEvent::hidden, {});
    }

    /// Idempotent.
    void close() override {
        {
            const std::lock_guard guard(overlays_.mutex_);
            if (std::exchange(isClosed_, true)) return;
            std::erase(overlays_.overlays_, state_);
            state_->visible = false;
        }
        tell(OverlayEvent::closed, {});
    }

  private:
    /// Only the main thread changes a description.
    void tell(OverlayEvent kind, Fields fields) {
        overlays_.engine_.journal.emit({kind, describe(state_->description.frame), std::move(fields)});
    }

    Fields whatIsSeen() const {
        Fields fields{{Field::level, std::to_string(state_->description.level)}};
        for (const OverlayLabel& label : state_->description.labels) fields.emplace_back(Field::label, label.text);
        return fields;
    }

    VirtualOverlays& overlays_;
    std::shared_ptr<State> state_;
    bool isClosed_ = false;
};

VirtualOverlays::VirtualOverlays(Engine& engine, VirtualDesktop& desktop) : engine_(engine), desktop_(desktop) {
    desktop.onSpaceChange.emplace_back([this] { tellWhichAreSeen(); });
}

void VirtualOverlays::tellWhichAreSeen() {
    constexpr unsigned fullScreenAuxiliary = 0x100;
    std::vector<std::shared_ptr<State>> visible;
    {
        const std::lock_guard guard(mutex_);
        std::copy_if(overlays_.begin(), overlays_.end(), std::back_inserter(visible),
                     [](const auto& state) { return state->visible; });
    }
    for (const auto& state : visible) {
        const OverlayDescription& description = state->description;
        const bool isLetIn =
            (description.collectionBehavior & fullScreenAuxiliary) != 0 || !desktop_.showsFullScreen(description.frame);
        {
            const std::lock_guard guard(mutex_);
            if (!state->visible || std::exchange(state->isLetIn, isLetIn) == isLetIn) continue;
        }
        engine_.journal.emit({isLetIn ? OverlayEvent::seen : OverlayEvent::unseen, describe(description.frame)});
    }
}

std::unique_ptr<Overlay> VirtualOverlays::makeOverlay(const OverlayDescription& description) {
    std::shared_ptr<State> state;
    {
        const std::lock_guard guard(mutex_);
        state = std::make_shared<State>(State{description, false, true, ++made_, 0});
        overlays_.push_back(state);
    }
    return std::make_unique<Shown>(*this, std::move(state));
}

void VirtualOverlays::forceLevel(int level) {
    const std::lock_guard guard(mutex_);
    for (const auto& state : overlays_) state->description.level = level;
}

bool VirtualOverlays::closeShown(const Rect& frame) {
    {
        const std::lock_guard guard(mutex_);
        const auto found = std::find_if(overlays_.begin(), overlays_.end(), [&frame](const auto& state) {
            return state->visible && state->description.frame == frame;
        });
        if (found == overlays_.end()) return false;
        (*found)->visible = false;
    }
    engine_.journal.emit({OverlayEvent::hidden, describe(frame)});
    return true;
}

std::vector<VirtualOverlays::State> VirtualOverlays::all() const {
    const std::lock_guard guard(mutex_);
    std::vector<State> states;
    states.reserve(overlays_.size());
    for (const auto& state : overlays_) states.push_back(*state);
    return states;
}

}  // namespace vantrel::virtualmac
