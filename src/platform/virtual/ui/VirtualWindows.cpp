#include "platform/virtual/ui/VirtualWindows.h"

#include <algorithm>
#include <utility>

#include "platform/virtual/ui/VirtualWindow.h"

namespace vantrel::virtualmac {

std::unique_ptr<Window> VirtualWindows::makeWindow(const WindowDescription& description, ActionHandler onAction) {
    Record record;
    record.state.title = description.title;
    record.state.contentRect = description.contentRect;
    record.state.styleMask = description.styleMask;
    record.state.views = description.views;
    record.onAction = std::make_shared<const ActionHandler>(std::move(onAction));
    std::set<std::string> ids;
    for (const View& view : description.views) {
        for (const Control& control : view.controls) {
            if (control.id.empty() || ids.insert(control.id).second) continue;
            engine_.misuse("Windows.makeWindow: two controls are called " + control.id);
        }
    }
    const std::lock_guard guard(mutex_);
    const int number = record.state.number = ++made_;
    windows_.push_back(std::move(record));
    return std::make_unique<VirtualWindow>(*this, number);
}

std::vector<WindowState> VirtualWindows::all() const {
    const std::lock_guard guard(mutex_);
    std::vector<WindowState> states;
    states.reserve(windows_.size());
    for (const Record& record : windows_) states.push_back(record.state);
    return states;
}

std::optional<WindowState> VirtualWindows::front() const {
    for (auto& state : all()) {
        if (state.visible) return state;
    }
    return std::nullopt;
}

void VirtualWindows::orderFrontRegardless(int number) {
    bringToFront(number);
    std::string title;
    if (!with(number, [&title](const Record& record) { title = record.state.title; })) return;
    desktop_.putClientWindowsAbove();
    engine_.journal.emit({WindowEvent::orderedFront, title});
}

void VirtualWindows::announce(std::string text) {
    const std::lock_guard guard(mutex_);
    announcements_.push_back(std::move(text));
}

std::vector<std::string> VirtualWindows::announcements() const {
    const std::lock_guard guard(mutex_);
    return announcements_;
}

void VirtualWindows::type(int number, std::string_view fieldId, std::string_view text) {
    with(number, [&](Record& record) {
        for (View& view : record.state.views) {
            for (Control& control : view.controls) {
                if (control.id == fieldId) control.text = text;
            }
        }
    });
}

void VirtualWindows::act(int number, std::string_view controlId) {
    // A copy: the handler may destroy its own window.
    std::shared_ptr<const ActionHandler> handler;
    with(number, [&handler](const Record& record) { handler = record.onAction; });
    if (handler && *handler) (*handler)(controlId);
}

void VirtualWindows::close(int number) {
    std::string title;
    with(number, [&title](Record& record) {
        record.state.visible = record.state.key = false;
        title = record.state.title;
    });
    engine_.journal.emit({WindowEvent::closed, title});
}

bool VirtualWindows::with(int number, const std::function<void(Record&)>& function) const {
    const std::lock_guard guard(mutex_);
    for (Record& record : windows_) {
        if (record.state.number != number) continue;
        function(record);
        return true;
    }
    return false;
}

void VirtualWindows::bringToFront(int number) {
    const std::lock_guard guard(mutex_);
    const auto found = std::find_if(windows_.begin(), windows_.end(),
                                    [number](const Record& record) { return record.state.number == number; });
    std::rotate(windows_.begin(), found, found == windows_.end() ? found : found + 1);
}

void VirtualWindows::remove(int number) {
    // Destroyed without the mutex held: it is declared before the lock, so it is destroyed after it.
    std::shared_ptr<const ActionHandler> handler;
    const std::lock_guard guard(mutex_);
    std::erase_if(windows_, [&](Record& record) {
        if (record.state.number != number) return false;
        handler = std::move(record.onAction);
        return true;
    });
}

}  // namespace vantrel::virtualmac
