#include "platform/linux/SystemProxies.h"

#include <QHostAddress>

namespace vantrel::linuxdesktop {

QList<QNetworkProxy> SystemProxies::queryProxy(const QNetworkProxyQuery& query) {
    const QString host = query.peerHostName();
    if (host == "localhost" || QHostAddress(host).isLoopback()) return {QNetworkProxy(QNetworkProxy::NoProxy)};
    return systemProxyForQuery(query);
}

}  // namespace vantrel::linuxdesktop
