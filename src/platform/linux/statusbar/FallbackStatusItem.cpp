#include "platform/linux/statusbar/FallbackStatusItem.h"

#include <QObject>
#include <utility>

namespace vantrel::linuxdesktop {

namespace {

constexpr int trayLookMilliseconds = 1000;

}  // namespace

FallbackStatusItem::FallbackStatusItem(std::unique_ptr<RemovableStatusItem> inTray, std::function<bool()> trayAvailable,
                                       Make makeFallback)
    : item_(std::move(inTray)), trayAvailable_(std::move(trayAvailable)), makeFallback_(std::move(makeFallback)) {
    QObject::connect(&looking_, &QTimer::timeout, [this] { look(); });
    looking_.start(trayLookMilliseconds);
}

void FallbackStatusItem::setButtonTitle(const std::string& title) {
    title_ = title;
    item_->setButtonTitle(title);
}

void FallbackStatusItem::setMenu(const Menu& menu) {
    menu_ = menu;
    item_->setMenu(menu);
}

void FallbackStatusItem::remove() {
    looking_.stop();
    item_->remove();
}

void FallbackStatusItem::look() {
    if (trayAvailable_()) return;
    looking_.stop();
    item_->remove();
    item_ = makeFallback_();
    if (menu_) item_->setMenu(*menu_);
    if (title_) item_->setButtonTitle(*title_);
}

}  // namespace vantrel::linuxdesktop
