#include "platform/linux/network/SystemProxies.h"

#include <QHostAddress>
#include <utility>

namespace vantrel::linuxdesktop {

namespace {

bool isThisComputer(QString host) {
    if (host.endsWith('.')) host.chop(1);
    return host == "localhost" || host.endsWith(".localhost") || QHostAddress(host).isLoopback();
}

quint16 usualPort(QNetworkProxy::ProxyType type) {
    constexpr quint16 http = 80;
    constexpr quint16 socks = 1080;
    return type == QNetworkProxy::Socks5Proxy ? socks : http;
}

}  // namespace

QList<QNetworkProxy> SystemProxies::queryProxy(const QNetworkProxyQuery& query) {
    QList<QNetworkProxy> usable;
    if (!isThisComputer(query.peerHostName())) {
        for (QNetworkProxy& proxy : systemProxyForQuery(query)) {
            if (proxy.type() == QNetworkProxy::NoProxy || proxy.hostName().isEmpty()) continue;
            // Qt makes a missing port zero.
            if (proxy.port() == 0) proxy.setPort(usualPort(proxy.type()));
            usable.append(std::move(proxy));
        }
    }
    usable.append(QNetworkProxy(QNetworkProxy::NoProxy));
    return usable;
}

}  // namespace vantrel::linuxdesktop
