#include "platform/linux/StripStatusItem.h"

#include <QObject>

#include "platform/linux/Appearance.h"
#include "platform/linux/LinuxScreens.h"
#include "platform/linux/MainThread.h"
#include "platform/linux/StatusStrip.h"
#include "platform/linux/X11Watcher.h"

namespace vantrel::linuxdesktop {

namespace {

// Stacking changes come in bursts, and our own raise is one of them.
constexpr int settleMilliseconds = 30;

}  // namespace

StripStatusItem::StripStatusItem(const MenuBuilder& builder, LinuxScreens& screens, X11Connection& connection,
                                 X11Watcher& watcher)
    : LinuxStatusItem(builder), screens_(screens), connection_(connection), strip_(std::make_unique<StatusStrip>()) {
    strip_->onPress = [this] { openMenu(); };
    QObject::connect(&menu(), &QMenu::aboutToHide, strip_.get(), [this] { strip_->setPressed(false); });
    settle_.setSingleShot(true);
    settle_.setInterval(settleMilliseconds);
    QObject::connect(&settle_, &QTimer::timeout, [this] { raiseIfCovered(); });
    stacking_ = watcher.observe(X11Watcher::Change::stacking, [this] {
        if (!settle_.isActive()) settle_.start();
    });
    displays_ = screens.observeScreenParametersDidChange([this] { place(); });
}

StripStatusItem::~StripStatusItem() = default;

void StripStatusItem::setButtonTitle(const std::string& title) {
    MainThread::require("setButtonTitle");
    strip_->setTitle(qtText(title));
    place();
    strip_->show();
    strip_->raise();
}

void StripStatusItem::place() {
    const X11Rectangle display = screens_.mainFrame();
    strip_->hangFrom(QRect(display.x, display.y, display.width, display.height));
}

void StripStatusItem::openMenu() {
    strip_->setPressed(true);
    const QSize size = menu().sizeHint();
    const QRect strip = strip_->geometry();
    menu().popup(QPoint(strip.right() + 1 - size.width(), strip.bottom() + 1));
}

bool StripStatusItem::isCovered() const {
    const auto own = static_cast<xcb_window_t>(strip_->winId());
    const auto cookie = xcb_query_tree(connection_.get(), connection_.root());
    const X11Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(connection_.get(), cookie, nullptr));
    if (!tree) return false;
    const xcb_window_t* windows = xcb_query_tree_children(tree.get());
    for (int i = xcb_query_tree_children_length(tree.get()) - 1; i >= 0 && windows[i] != own; --i) {
        const auto attributesCookie = xcb_get_window_attributes(connection_.get(), windows[i]);
        const auto geometryCookie = xcb_get_geometry(connection_.get(), windows[i]);
        const X11Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(connection_.get(), attributesCookie, nullptr));
        const X11Reply<xcb_get_geometry_reply_t> place(
            xcb_get_geometry_reply(connection_.get(), geometryCookie, nullptr));
        if (!attributes || !place || attributes->map_state != XCB_MAP_STATE_VIEWABLE) continue;
        if (QRect(place->x, place->y, place->width, place->height).intersects(strip_->geometry())) return true;
    }
    return false;
}

void StripStatusItem::raiseIfCovered() {
    if (strip_->isVisible() && isCovered()) strip_->raise();
}

void StripStatusItem::remove() {
    MainThread::require("remove");
    stacking_.reset();
    displays_.reset();
    settle_.stop();
    menu().hide();
    strip_->hide();
}

}  // namespace vantrel::linuxdesktop
