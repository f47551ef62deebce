#pragma once

#include <QNetworkProxyFactory>

namespace vantrel::linuxdesktop {

/// The proxies of the user's environment, but none for this computer itself. What names no host is no proxy; one
/// without a port, or with none that can be, is at its kind's usual one. The last is always the way without a proxy,
/// which is not taken when another one fails. A proxy that asks for a password gets it for a tunnel (https) only: a
/// plain request has a body that is not sent twice.
class SystemProxies final : public QNetworkProxyFactory {
  public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override;
};

}  // namespace vantrel::linuxdesktop
