#pragma once

#include <QNetworkProxyFactory>

namespace vantrel::linuxdesktop {

/// The proxies from the user's environment, but none for this computer itself. A proxy setting that names no host is
/// ignored. One without a valid port gets the usual port of its kind. The last entry is always the direct way, which is
/// not taken when another entry fails. A proxy that asks for a password gets it only for a tunnel (https): a plain
/// request has a body that is not sent twice.
class SystemProxies final : public QNetworkProxyFactory {
  public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override;
};

}  // namespace vantrel::linuxdesktop
