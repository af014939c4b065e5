#pragma once

#include <QHostAddress>
#include <QNetworkProxy>

namespace fleetor {

/// Asks the system for a proxy, except for loopback addresses.
class SystemProxiesExceptLoopback final : public QNetworkProxyFactory {
 public:
  QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override {
    const QString host = query.peerHostName();
    if (host == u"localhost" || QHostAddress(host).isLoopback()) return {QNetworkProxy::NoProxy};
    return systemProxyForQuery(query);
  }
};

}  // namespace fleetor
