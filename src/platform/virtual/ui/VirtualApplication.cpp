#include "platform/virtual/ui/VirtualApplication.h"

#include <utility>

namespace vantrel::virtualmac {

const MenuItem* findKeyEquivalent(const Menu& menu, std::string_view key) {
    for (const MenuItem& item : menu.items) {
        if (item.kind == MenuItem::Kind::action && item.enabled && item.keyEquivalent == key) return &item;
        if (item.kind != MenuItem::Kind::submenu) continue;
        if (const MenuItem* found = findKeyEquivalent(item.submenu, key)) return found;
    }
    return nullptr;
}

void VirtualApplication::setActivationPolicy(ActivationPolicy policy) {
    engine_.journal.emit({ClientEvent::activationPolicy, std::to_string(static_cast<int>(policy))});
}

void VirtualApplication::setDelegate(std::weak_ptr<ApplicationDelegate> delegate) {
    const std::lock_guard guard(mutex_);
    delegate_ = std::move(delegate);
}

void VirtualApplication::setMainMenu(const Menu& menu) {
    std::string titles;
    for (const MenuItem& item : menu.items) {
        if (item.kind != MenuItem::Kind::submenu) continue;
        if (!titles.empty() || &item != &menu.items.front()) titles += ",";
        titles += item.submenu.title;
    }
    {
        const std::lock_guard guard(mutex_);
        mainMenu_ = menu;
    }
    engine_.journal.emit({ClientEvent::mainMenu, titles});
}

void VirtualApplication::run() {
    engine_.mainLoop.postEvent([this] {
        std::shared_ptr<ApplicationDelegate> delegate;
        {
            const std::lock_guard guard(mutex_);
            delegate = delegate_.lock();
        }
        if (delegate) delegate->applicationDidFinishLaunching();
    });
    engine_.mainLoop.run(MainRunLoop::Mode::standard, [] { return false; });
}

void VirtualApplication::activate() {
    requestActivation();
    auto& [engine, desktop, activations, processes, windows] = dependencies_;
    if (engine.isOver() || activations.isClientInFront()) return;
    unhide();
    const auto front = desktop.front();
    if (activations.isCooperative() && !front.empty()) {
        processes.find(processes.ownProcess())->requestActivationFrom(front.front(), ActivationOptions::none);
    }
    for (const WindowState& window : windows.all()) {
        if (window.visible) windows.orderFrontRegardless(window.number);
    }
}

void VirtualApplication::requestActivation() {
    engine_.journal.emit({ClientEvent::activate});
    if (engine_.isOver()) return;
    const auto decision = dependencies_.activations.decide(dependencies_.processes.ownProcess());
    if (!decision.comesAfter) return;
    if (*decision.comesAfter == 0) return comeToFront(false);
    engine_.world.after(*decision.comesAfter, [this] { comeToFront(true); });
}

void VirtualApplication::comeToFront(bool isTold) {
    FrontCandidate client = dependencies_.processes.find(dependencies_.processes.ownProcess())->asCandidate();
    client.isTold = isTold;
    dependencies_.desktop.bringToFront(client);
}

void VirtualApplication::terminate() {
    if (engine_.mainLoop.isOver()) return;
    engine_.journal.emit({ClientEvent::terminateAsked});
    std::shared_ptr<ApplicationDelegate> delegate;
    {
        const std::lock_guard guard(mutex_);
        delegate = delegate_.lock();
    }
    if (delegate && delegate->applicationShouldTerminate() == TerminateReply::cancel) {
        engine_.journal.emit({ClientEvent::terminateRefused});
        return;
    }
    if (engine_.mainLoop.isOver()) return;
    engine_.journal.emit({ClientEvent::terminated});
    engine_.endProcess();
    if (exitsWhenTerminated_ && engine_.isMainThread()) engine_.mainLoop.exitProcess();
}

Menu VirtualApplication::mainMenu() const {
    const std::lock_guard guard(mutex_);
    return mainMenu_;
}

bool VirtualApplication::perform(const MenuItem& item) {
    if (item.target) {
        item.target();
        return true;
    }
    if (item.action != "terminate:") return false;
    terminate();
    return true;
}

}  // namespace vantrel::virtualmac
