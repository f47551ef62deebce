#include "platform/virtual/participant/Participant.h"

#include <algorithm>
#include <utility>

namespace vantrel::virtualmac {

void Participant::post(Happening what, Attempt attempt) {
    dependencies_.engine.mainLoop.postEvent(
        [this, what = std::move(what), attempt = std::move(attempt)] { perform(what, attempt); });
}

std::string Participant::busy() const {
    if (isMenuInFront()) return "a menu is open";
    if (!dependencies_.alerts.up().empty()) return "an alert is up";
    return {};
}

bool Participant::isMenuInFront() const {
    return dependencies_.menus.inFront() > dependencies_.alerts.inFront();
}

std::string Participant::whyNoMenu() const {
    if (isMenuInFront()) return {};
    return dependencies_.menus.isOpen() ? "an alert is up" : "no menu is open";
}

std::optional<WindowState> Participant::frontWindow() const {
    if (dependencies_.application.isHidden() || dependencies_.desktop.mainDisplayShowsFullScreen()) return std::nullopt;
    return dependencies_.windows.front();
}

void Participant::type(const std::string& fieldId, std::string text) {
    Happening what{Deed::type, fieldId, {{Field::value, text}}};
    post(std::move(what), [this, fieldId, text = std::move(text)](const auto&) -> std::string {
        if (auto why = busy(); !why.empty()) return why;
        const auto window = frontWindow();
        if (!window || !window->shows(fieldId)) return "it is not on the screen";
        if (window->control(fieldId)->kind != Control::Kind::textField) return "it is not a text field";
        if (!window->isEnabled(fieldId)) return "it is disabled";
        bringClientToFront();
        dependencies_.windows.type(window->number, fieldId, text);
        return {};
    });
}

std::string Participant::press(const WindowState& window, const Control& button, const std::function<void()>& heard) {
    if (button.kind != Control::Kind::button) return "it is not a button";
    if (!window.isEnabled(button.id)) return "it is disabled";
    heard();
    bringClientToFront();
    dependencies_.windows.act(window.number, button.id);
    return {};
}

void Participant::press(const std::string& button) {
    post({Deed::press, button}, [this, button](const auto& heard) -> std::string {
        if (auto why = busy(); !why.empty()) return why;
        const auto window = frontWindow();
        if (!window) return "no window is on the screen";
        if (window->shows(button)) return press(*window, *window->control(button), heard);
        for (const View& view : window->views) {
            if (view.hidden) continue;
            for (const Control& control : view.controls) {
                if (control.kind != Control::Kind::button || control.text != button) continue;
                return press(*window, control, heard);
            }
        }
        return "it is not on the screen";
    });
}

void Participant::pressReturn() {
    post({Deed::pressReturn}, [this](const auto& heard) { return performReturn(heard); });
}

std::string Participant::performReturn(const std::function<void()>& heard) {
    if (isMenuInFront()) return "a menu is open";
    if (const auto alerts = dependencies_.alerts.up(); !alerts.empty()) {
        if (!dependencies_.alerts.isFrontSeen()) return "nobody sees the alert";
        heard();
        dependencies_.alerts.answer(alerts.back().buttons.front());
        return {};
    }
    const auto window = frontWindow();
    if (!window || !window->key) return "no window has the keyboard";
    for (const View& view : window->views) {
        if (view.hidden) continue;
        for (const Control& control : view.controls) {
            if (control.keyEquivalent == "\r") return press(*window, control, heard);
        }
    }
    return "no button answers";
}

void Participant::answerAlert(const std::string& buttonTitle) {
    post({Deed::answerAlert, buttonTitle}, [this, buttonTitle](const auto& heard) -> std::string {
        const auto alerts = dependencies_.alerts.up();
        if (alerts.empty()) return "no alert is up";
        if (isMenuInFront()) return "a menu is open";
        const auto& buttons = alerts.back().buttons;
        if (std::find(buttons.begin(), buttons.end(), buttonTitle) == buttons.end()) {
            return "the alert has no such button";
        }
        if (!dependencies_.alerts.isFrontSeen()) return "nobody sees the alert";
        heard();
        if (dependencies_.alerts.isFrontActivating()) bringClientToFront();
        dependencies_.alerts.answer(buttonTitle);
        return {};
    });
}

void Participant::track(const std::string& title, const Menu& menu, std::uint64_t statusItem) {
    const auto chosen = dependencies_.menus.track(title, menu, statusItem);
    if (!chosen) return;
    const auto act = [this, item = *chosen] { dependencies_.application.perform(item); };
    if (statusItem == 0 || dependencies_.systemVersion < firstSystemThatHostsStatusItems) return act();
    Engine& engine = dependencies_.engine;
    engine.mainLoop.async(engine.scheduler.now(), act);
}

void Participant::openStatusMenu() {
    post({Deed::openStatusMenu}, [this](const auto& heard) -> std::string {
        if (auto why = busy(); !why.empty()) return why;
        const auto items = dependencies_.statusBar.items();
        if (items.empty()) return "there is no status item";
        if (items.front().menu.items.empty()) return "it has no menu";
        heard();
        track(items.front().title, items.front().menu, items.front().number);
        return {};
    });
}

void Participant::openMainMenu(const std::string& title) {
    post({Deed::openMenu, title}, [this, title](const auto& heard) -> std::string {
        if (auto why = busy(); !why.empty()) return why;
        const Menu mainMenu = dependencies_.application.mainMenu();
        for (const MenuItem& item : mainMenu.items) {
            if (item.kind != MenuItem::Kind::submenu || item.submenu.title != title) continue;
            heard();
            track(title, item.submenu);
            return {};
        }
        return "there is no such menu";
    });
}

void Participant::chooseMenuItem(const std::string& title) {
    post({Deed::chooseMenuItem, title}, [this, title](const auto&) -> std::string {
        if (auto why = whyNoMenu(); !why.empty()) return why;
        return dependencies_.menus.choose(title) ? "" : "the menu has no such item to choose";
    });
}

void Participant::closeMenu() {
    post({Deed::closeMenu}, [this](const auto&) -> std::string {
        auto why = whyNoMenu();
        if (why.empty()) dependencies_.menus.close();
        return why;
    });
}

void Participant::pressCommand(const std::string& key) {
    const Happening what{Deed::pressCommand, key};
    if (!isTapped()) return post(what, [this, key](const auto& heard) { return performKeyEquivalent(key, heard); });
    const bool isUpper = key.size() == 1 && key[0] >= 'A' && key[0] <= 'Z';
    const std::string letter = isUpper ? std::string(1, static_cast<char>(key[0] - 'A' + 'a')) : key;
    KeyStroke stroke = KeyStroke::parse(letter).value_or(KeyStroke{});
    stroke.flags = KeyStroke::command | (isUpper ? KeyStroke::shift : 0);
    pressThrough(what, stroke, [this, key] {
        dependencies_.engine.mainLoop.postEvent([this, key] { performKeyEquivalent(key, [] {}); });
    });
}

std::string Participant::performKeyEquivalent(const std::string& key, const std::function<void()>& heard) {
    if (auto why = busy(); !why.empty()) return why;
    const Menu mainMenu = dependencies_.application.mainMenu();
    const MenuItem* item = findKeyEquivalent(mainMenu, key);
    if (item == nullptr) return "no menu item answers";
    if (!item->target && item->action != "terminate:") return "only a text field would answer";
    heard();
    dependencies_.application.perform(*item);
    return {};
}

void Participant::keyForClient(const KeyStroke& key) {
    constexpr std::int64_t returnKey = 36;
    const char letter = key.letter();
    dependencies_.engine.mainLoop.postEvent([this, key, letter] {
        if (key == KeyStroke{returnKey, 0}) {
            performReturn([] {});
        } else if (letter != 0 && key.flags == KeyStroke::command) {
            performKeyEquivalent(std::string(1, letter), [] {});
        }
    });
}

void Participant::closeWindow() {
    post({Deed::closeWindow}, [this](const auto& heard) -> std::string {
        if (auto why = busy(); !why.empty()) return why;
        const auto window = frontWindow();
        if (!window) return "no window is on the screen";
        if ((window->styleMask & windowClosable) == 0) return "it has no close button";
        heard();
        dependencies_.windows.close(window->number);
        return {};
    });
}

void Participant::logOut() {
    post({Deed::logOut}, [this](const auto& heard) -> std::string {
        heard();
        dependencies_.application.terminate();
        return {};
    });
}

void Participant::answerPermissionPrompt(bool granted) {
    dependencies_.engine.world.after(0, [this, granted] {
        Fields fields{{Field::value, granted ? "yes" : "no"}};
        if (!dependencies_.capture.answer(granted)) fields.emplace_back(Field::ignored, "no permission prompt is up");
        dependencies_.engine.journal.emit({Deed::answerPermission, {}, std::move(fields)});
    });
}

}  // namespace vantrel::virtualmac
