#include "platform/virtual/keyboard/VirtualKeyboardTaps.h"

#include <algorithm>
#include <utility>

#include "platform/portable/LostTap.h"
#include "platform/virtual/keyboard/KeyStroke.h"

namespace vantrel::virtualmac {

class VirtualKeyboardTaps::Tap final : public KeyboardTap {
  public:
    Tap(VirtualKeyboardTaps& keyboard, StatePointer state) : keyboard_(keyboard), state_(std::move(state)) {}
    ~Tap() override { keyboard_.remove(state_); }
    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;

  private:
    VirtualKeyboardTaps& keyboard_;
    StatePointer state_;
};

/// The client's handle of a tap, which leaves the system as soon as the client knows that it has lost the permission.
class VirtualKeyboardTaps::ClientTap final : public KeyboardTap {
  public:
    explicit ClientTap(VirtualKeyboardTaps& keyboard) : keyboard_(keyboard) {}
    ~ClientTap() override { leave(); }
    ClientTap(const ClientTap&) = delete;
    ClientTap& operator=(const ClientTap&) = delete;

    void stand(std::unique_ptr<KeyboardTap> tap) {
        tap_ = std::move(tap);
        keyboard_.clientTaps_.push_back(this);
        look_ = keyboard_.engine_.mainLoop.addTimerInEveryMode(betweenLooksForLostTrust, true, [this] {
            if (!keyboard_.trust_.isTrusted()) keyboard_.noteLostTrust();
        });
    }

    void leave() {
        std::erase(keyboard_.clientTaps_, this);
        if (look_) keyboard_.engine_.mainLoop.invalidate(*std::exchange(look_, nullptr));
        tap_.reset();
    }

  private:
    VirtualKeyboardTaps& keyboard_;
    std::unique_ptr<KeyboardTap> tap_;
    TimerTable::State look_;
};

VirtualKeyboardTaps::VirtualKeyboardTaps(Engine& engine, VirtualAccessibilityTrust& trust)
    : engine_(engine), trust_(trust) {
    trust_.onRevoked = [this] { disableAll(); };
}

std::unique_ptr<KeyboardTap> VirtualKeyboardTaps::create(KeyDecision decision, KeyReport report) {
    auto made = std::make_unique<ClientTap>(*this);
    auto tap = createFilter([this, decision, report = std::move(report), own = made.get()](const KeyEvent& event) {
        const bool isNotice = event.type != KeyEventType::keyDown && event.type != KeyEventType::flagsChanged;
        if (isNotice) own->leave();
        const std::string name(decision(event));
        if (name.empty()) return false;
        if (isNotice) engine_.misuse("a keyboard tap swallows the notice of its end");
        if (!isNotice && report) report(name);
        return true;
    });
    if (!tap) return nullptr;
    made->stand(std::move(tap));
    return made;
}

void VirtualKeyboardTaps::noteLostTrust() {
    if (!engine_.isMainThread()) return engine_.mainLoop.postOwn([this] { noteLostTrust(); });
    if (clientTaps_.empty() || (trust_.isProcessTrusted() && givesAnother())) return;
    while (!clientTaps_.empty()) clientTaps_.back()->leave();
}

bool VirtualKeyboardTaps::givesAnother() {
    const Moment now = engine_.scheduler.now();
    if (now < nextAsking_) return true;
    if (!createFilter([](const KeyEvent&) { return false; })) return false;
    nextAsking_ = later(now, betweenLooksForLostTrust);
    return true;
}

std::unique_ptr<KeyboardTap> VirtualKeyboardTaps::createFilter(KeyFilter filter) {
    auto state = std::make_shared<State>(State{std::make_shared<const KeyFilter>(std::move(filter))});
    bool refused = !trust_.isTrusted();
    {
        const std::lock_guard guard(mutex_);
        if (!refused && refusals_ > 0) {
            refused = true;
            if (refusals_ != always) --refusals_;
        }
        if (!refused) taps_.insert(taps_.begin(), state);
    }
    engine_.journal.emit({refused ? KeyboardEvent::tapRefused : KeyboardEvent::tapCreated});
    if (refused) return nullptr;
    return std::make_unique<Tap>(*this, std::move(state));
}

void VirtualKeyboardTaps::refuse(int times) {
    const std::lock_guard guard(mutex_);
    refusals_ = times;
}

std::size_t VirtualKeyboardTaps::taps() const {
    const std::lock_guard guard(mutex_);
    return taps_.size();
}

std::size_t VirtualKeyboardTaps::enabledTaps() const {
    const std::lock_guard guard(mutex_);
    return static_cast<std::size_t>(
        std::count_if(taps_.begin(), taps_.end(), [](const auto& tap) { return tap->enabled; }));
}

void VirtualKeyboardTaps::press(const KeyEvent& event, Block passed) {
    {
        const std::lock_guard guard(mutex_);
        keys_.push_back({event, std::move(passed), {}});
        if (keys_.size() > 1) return;
        keys_.front().ahead = tapsToAsk();
    }
    ask();
}

std::vector<VirtualKeyboardTaps::StatePointer> VirtualKeyboardTaps::tapsToAsk() const {
    return secureInput_ ? std::vector<StatePointer>() : taps_;
}

void VirtualKeyboardTaps::ask() {
    StatePointer tap;
    KeyEvent event;
    std::uint64_t question = 0;
    {
        const std::lock_guard guard(mutex_);
        if (frozen_) return;
        Pressed& first = keys_.front();
        std::erase_if(first.ahead, [](const auto& each) { return !each->enabled; });
        if (!first.ahead.empty() && !engine_.isOver()) {
            tap = first.ahead.front();
            event = first.event;
            question = open_ = ++questions_;
        }
    }
    if (!tap) {
        Block passed;
        {
            const std::lock_guard guard(mutex_);
            passed.swap(keys_.front().passed);
        }
        if (passed) passed();
        return goOn();
    }
    engine_.mainLoop.postEvent([this, tap, question, event] { decide(tap, question, event); });
    engine_.world.after(tapTimeout, [this, tap, question] { giveUp(tap, question); });
}

void VirtualKeyboardTaps::decide(const StatePointer& tap, std::uint64_t question, const KeyEvent& event) {
    std::shared_ptr<const KeyFilter> filter;
    {
        const std::lock_guard guard(mutex_);
        if (open_ != question) return;
        heard_ = question;
        // The tap may be destroyed in its own filter.
        filter = tap->filter;
    }
    if (!filter || !(*filter)(event)) return pass(question);
    swallow(question);
}

void VirtualKeyboardTaps::pass(std::uint64_t question) {
    {
        const std::lock_guard guard(mutex_);
        if (open_ != question) return;
        open_ = heard_ = 0;
        keys_.front().ahead.erase(keys_.front().ahead.begin());
    }
    engine_.world.after(0, [this] { ask(); });
}

void VirtualKeyboardTaps::swallow(std::uint64_t question) {
    KeyEvent event;
    {
        const std::lock_guard guard(mutex_);
        // The report took too long: the system has given up.
        if (open_ != question) return;
        open_ = heard_ = 0;
        event = keys_.front().event;
    }
    if (event.type == KeyEventType::keyDown) {
        engine_.journal.emit(
            {KeyboardEvent::swallowed,
             KeyStroke{event.keyCode, event.flags}.text(),
             {{Field::code, std::to_string(event.keyCode)}, {Field::flags, std::to_string(event.flags)}}});
    }
    engine_.world.after(0, [this] { goOn(); });
}

void VirtualKeyboardTaps::goOn() {
    {
        const std::lock_guard guard(mutex_);
        keys_.pop_front();
        if (keys_.empty()) return;
        keys_.front().ahead = tapsToAsk();
    }
    // Not at once: a thousand keys would nest a thousand calls.
    engine_.world.after(0, [this] { ask(); });
}

void VirtualKeyboardTaps::giveUp(const StatePointer& tap, std::uint64_t question) {
    {
        const std::lock_guard guard(mutex_);
        if (open_ != question) return;
    }
    disable(tap, KeyEventType::tapDisabledByTimeout);
}

void VirtualKeyboardTaps::disable(const StatePointer& tap, KeyEventType notice) {
    std::uint64_t waiting = 0;
    {
        const std::lock_guard guard(mutex_);
        if (!std::exchange(tap->enabled, false)) return;
        if (open_ != 0 && keys_.front().ahead.front() == tap) waiting = open_;
    }
    const bool timedOut = notice == KeyEventType::tapDisabledByTimeout;
    engine_.journal.emit({KeyboardEvent::tapDisabled, timedOut ? "timeout" : "user input"});
    engine_.mainLoop.postEvent([this, tap, notice] {
        std::shared_ptr<const KeyFilter> filter;
        {
            const std::lock_guard guard(mutex_);
            if (std::find(taps_.begin(), taps_.end(), tap) != taps_.end()) filter = tap->filter;
        }
        if (filter) (*filter)({notice, 0, 0});
    });
    if (waiting != 0) pass(waiting);
}

void VirtualKeyboardTaps::disableAll() {
    std::vector<StatePointer> all;
    {
        const std::lock_guard guard(mutex_);
        if (freezes_) {
            frozen_ = !taps_.empty();
            return;
        }
        all = taps_;
    }
    for (const StatePointer& tap : all) disable(tap, KeyEventType::tapDisabledByUserInput);
}

void VirtualKeyboardTaps::remove(const StatePointer& tap) {
    std::uint64_t waiting = 0;
    bool thaws = false;
    // Destroyed here on the main thread, with everything it owns, even if questions are still on their way.
    std::shared_ptr<const KeyFilter> filter;
    {
        const std::lock_guard guard(mutex_);
        std::erase(taps_, tap);
        tap->enabled = false;
        filter.swap(tap->filter);
        // A question that is being answered right now still counts: a tap may end in its own report.
        if (open_ != 0 && open_ != heard_ && keys_.front().ahead.front() == tap) waiting = open_;
        thaws = taps_.empty() && std::exchange(frozen_, false) && open_ == 0 && !keys_.empty();
    }
    engine_.journal.emit({KeyboardEvent::tapRemoved});
    if (waiting != 0) pass(waiting);
    if (thaws) engine_.world.after(0, [this] { ask(); });
}

}  // namespace vantrel::virtualmac
