#include "platform/linux/network/NetworkManagers.h"

#include <QNetworkAccessManager>

#include "platform/linux/network/SystemProxies.h"

namespace vantrel::linuxdesktop {

NetworkManagers::NetworkManagers() {
    endings_.setObjectName("vantrel-network-endings");
    endings_.start();
}

NetworkManagers::~NetworkManagers() {
    // What deleteLater() has queued is deleted before the thread ends.
    endings_.quit();
    endings_.wait();
}

std::shared_ptr<QNetworkAccessManager> NetworkManagers::make() {
    auto made = std::make_unique<QNetworkAccessManager>();
    // The manager takes ownership.
    made->setProxyFactory(new SystemProxies);
    return {made.release(), [this](QNetworkAccessManager* manager) {
                manager->moveToThread(&endings_);
                manager->deleteLater();
            }};
}

}  // namespace vantrel::linuxdesktop
