#include "platform/linux/statusbar/StripStatusItem.h"

#include <QApplication>
#include <QCursor>
#include <QObject>
#include <algorithm>

#include "platform/linux/desktop/LinuxScreens.h"
#include "platform/linux/statusbar/StatusKey.h"
#include "platform/linux/statusbar/StatusStrip.h"
#include "platform/linux/statusbar/TopEdge.h"
#include "platform/linux/threads/MainThread.h"
#include "platform/linux/ui/Appearance.h"
#include "platform/linux/ui/QtConnection.h"
#include "platform/linux/x11/FrontWindows.h"
#include "platform/linux/x11/X11Watcher.h"
#include "platform/linux/x11/X11WindowSurvey.h"

namespace vantrel::linuxdesktop {

namespace {

// Changes come in bursts, and showing the strip is itself a change.
constexpr int settleMilliseconds = 30;

// How often the pointer is checked while the strip is visible, and how far from the strip it still counts as near:
// below it, or past a top edge that another display borders.
constexpr int pointerLookMilliseconds = 200;
constexpr int nearness = 12;

QRect rectangle(const X11Rectangle& frame) {
    return {frame.x, frame.y, frame.width, frame.height};
}

}  // namespace

StripStatusItem::StripStatusItem(const StatusBarDependencies& dependencies, Presence presence)
    : LinuxStatusItem(dependencies.menuBuilder),
      dependencies_(dependencies),
      presence_(presence),
      strip_(std::make_unique<StatusStrip>()),
      topEdge_(std::make_unique<TopEdge>(dependencies.connection, dependencies.watcher, dependencies.front,
                                         [this] { reveal(); })),
      key_(StatusKey::listen([this] { openMenuByKey(); })) {
    strip_->onPress = [this] { openMenu(); };
    QObject::connect(&menu(), &QMenu::aboutToHide, strip_.get(), [this] {
        menuOpen_ = false;
        strip_->setPressed(false);
        settle_.start();
    });
    settle_.setSingleShot(true);
    settle_.setInterval(settleMilliseconds);
    QObject::connect(&settle_, &QTimer::timeout, [this] { update(); });
    looking_.setInterval(pointerLookMilliseconds);
    QObject::connect(&looking_, &QTimer::timeout, [this] { look(); });

    const auto soon = [this] {
        if (!settle_.isActive()) settle_.start();
    };
    overlays_ = dependencies.front.observeOverlays(soon);
    stacking_ = dependencies.watcher.observe(X11Watcher::Change::stacking, soon);
    desktops_ = dependencies.watcher.observe(X11Watcher::Change::currentDesktop, soon);
    windows_ = dependencies.watcher.observe(X11Watcher::Change::windows, soon);
    displays_ = dependencies.screens.observeScreenParametersDidChange([this] { place(); });
}

StripStatusItem::~StripStatusItem() = default;

void StripStatusItem::setButtonTitle(const std::string& title) {
    MainThread::require("setButtonTitle");
    if (removed_) return;
    strip_->setTitle(qtText(title));
    menu().setAccessibleName(qtText(title));
    place();
}

void StripStatusItem::place() {
    const X11Rectangle display = dependencies_.screens.primaryFrame();
    strip_->hangFrom(rectangle(display));
    topEdge_->lieAlong(display, dependencies_.screens.isBorderedFromAbove());
    update();
}

void StripStatusItem::openMenu() {
    menuOpen_ = true;
    strip_->setPressed(true);
    const QSize size = menu().sizeHint();
    const QRect strip = strip_->geometry();
    menu().popup(QPoint(strip.right() + 1 - size.width(), strip.bottom() + 1));
}

// The strip comes with its menu, also over a full-screen window. Somebody who does not see the menu hears the entry
// that can be chosen.
void StripStatusItem::openMenuByKey() {
    if (removed_ || menuOpen_ || QApplication::activeModalWidget() != nullptr) return;
    menuOpen_ = true;
    update();
    openMenu();
    const auto entries = menu().actions();
    const auto first = std::find_if(entries.begin(), entries.end(),
                                    [](const QAction* entry) { return entry->isEnabled() && !entry->isSeparator(); });
    if (first != entries.end()) menu().setActiveAction(*first);
}

void StripStatusItem::update() {
    if (removed_) return;
    const bool wasCovered = covered_;
    covered_ = isCovered();
    topEdge_->listen(covered_);
    if (!covered_) revealed_ = false;
    // The edge reports a pointer that arrives, not one that is already there.
    if (covered_ && !wasCovered) revealed_ = pointerIsNear(0, 0);
    // An overlay on any display may cover the tray's panel.
    const bool stands = presence_ == Presence::always || dependencies_.front.keepsAnOverlay();
    const bool shown = menuOpen_ || (covered_ ? revealed_ : stands);
    if (covered_ && revealed_ && !looking_.isActive()) looking_.start();
    if (!revealed_) looking_.stop();
    if (shown == strip_->isVisible()) return;
    if (!shown) kept_.reset();
    strip_->setVisible(shown);
    waitForQtRequests();
    if (!shown) return;
    kept_ = dependencies_.front.keep(static_cast<xcb_window_t>(strip_->winId()), FrontWindows::Rank::statusItem);
    dependencies_.front.restack();
}

void StripStatusItem::reveal() {
    if (!covered_ || revealed_) return;
    revealed_ = true;
    update();
}

void StripStatusItem::look() {
    if (menuOpen_ || pointerIsNear(nearness, strip_->height() + nearness)) return;
    revealed_ = false;
    update();
}

bool StripStatusItem::pointerIsNear(int above, int below) const {
    const QRect display = rectangle(dependencies_.screens.primaryFrame());
    return QRect(display.left(), display.top() - above, display.width(), above + below + 1).contains(QCursor::pos());
}

bool StripStatusItem::isCovered() const {
    const auto windows = dependencies_.survey.frontToBack();
    if (!windows) return false;
    const QRect place = strip_->geometry();
    return std::any_of(windows->begin(), windows->end(), [&place](const X11WindowFacts& facts) {
        return facts.fullScreen && facts.viewable && rectangle(facts.frame).intersects(place);
    });
}

void StripStatusItem::remove() {
    MainThread::require("remove");
    removed_ = true;
    for (auto* observation : {&overlays_, &stacking_, &desktops_, &windows_, &displays_, &kept_}) observation->reset();
    settle_.stop();
    looking_.stop();
    topEdge_.reset();
    key_.reset();
    menu().hide();
    strip_->hide();
}

}  // namespace vantrel::linuxdesktop
