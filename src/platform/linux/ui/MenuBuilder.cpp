#include "platform/linux/ui/MenuBuilder.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QPointer>
#include <memory>

#include "platform/linux/threads/MainThread.h"
#include "platform/linux/threads/RunLoopModes.h"
#include "platform/linux/ui/Appearance.h"
#include "platform/linux/ui/Responder.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr int longestItemTitle = 120;

// Qt takes an ampersand for a mnemonic and text after a tab for a key.
QString menuTitle(const std::string& title) {
    return shownText(qtText(title).replace('\t', ' ').replace('\n', ' '), longestItemTitle).replace('&', "&&");
}

QKeySequence keySequence(const std::string& keyEquivalent) {
    const QString key = qtText(keyEquivalent);
    if (key.isEmpty()) return {};
    const bool shifted = key != key.toLower();
    return QKeySequence((shifted ? "Ctrl+Shift+" : "Ctrl+") + key.toUpper());
}

}  // namespace

void MenuBuilder::fill(QMenu& menu, const Menu& contents) const {
    menu.clear();
    for (const MenuItem& item : contents.items) addItem(menu, item);
}

void MenuBuilder::addItem(QMenu& menu, const MenuItem& item) const {
    if (item.kind == MenuItem::Kind::separator) {
        menu.addSeparator();
    } else if (item.kind == MenuItem::Kind::submenu) {
        QMenu* submenu = menu.addMenu(menuTitle(item.title.empty() ? item.submenu.title : item.title));
        fill(*submenu, item.submenu);
    } else {
        QAction* action = menu.addAction(menuTitle(item.title));
        action->setEnabled(item.isAvailable());
        action->setMenuRole(QAction::NoRole);
        action->setShortcut(keySequence(item.keyEquivalent));
        QObject::connect(action, &QAction::triggered, action,
                         [this, action, target = item.target, selector = item.action] {
                             if (target) {
                                 mainThread_.post([known = QPointer(action), target] {
                                     if (known) target();
                                 });
                             } else if (!selector.empty()) {
                                 mainThread_.post([this, selector] { responder_.perform(selector); });
                             }
                         });
    }
}

void MenuBuilder::track(QMenu& menu) const {
    auto stay = std::make_shared<std::unique_ptr<RunLoopModes::Stay>>();
    QObject::connect(&menu, &QMenu::aboutToShow, &menu,
                     [this, stay] { *stay = std::make_unique<RunLoopModes::Stay>(modes_); });
    QObject::connect(&menu, &QMenu::aboutToHide, &menu, [stay] { stay->reset(); });
}

}  // namespace vantrel::linuxdesktop
