#pragma once

#include <QNetworkProxyFactory>

namespace vantrel::linuxdesktop {

/// The proxies of the user's environment, but none for this computer itself.
class SystemProxies final : public QNetworkProxyFactory {
  public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override;
};

}  // namespace vantrel::linuxdesktop
