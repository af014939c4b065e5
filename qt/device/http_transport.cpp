#include "qt/device/http_transport.h"

#include <QMetaObject>
#include <QNetworkAccessManager>
#include <QThread>
#include <utility>

#include "qt/device/http_exchange.h"
#include "qt/device/system_proxies.h"

namespace fleetor {

// The inhabitant of the network thread. The exchanges are its children.
class HttpNetwork final : public QObject {
 public:
  HttpNetwork() { manager_.setProxyFactory(new SystemProxiesExceptHere); }

  void send(HttpRequest request, Transport::Done done, HttpTransport::Limits limits) {
    auto* exchange = new HttpExchange(manager_, std::move(request), std::move(done), limits);
    exchange->setParent(this);
    exchange->start();
  }

  void cancelAll() {
    for (HttpExchange* exchange : exchanges())
      exchange->cancel();
  }

 private:
  QList<HttpExchange*> exchanges() const {
    QList<HttpExchange*> all;
    for (QObject* child : children())
      if (auto* exchange = dynamic_cast<HttpExchange*>(child)) all.append(exchange);
    return all;
  }

  QNetworkAccessManager manager_{this};  // a child, so that it moves to the network thread too
};

struct HttpTransport::Parts {
  Limits limits;
  QThread thread;
  HttpNetwork* network = nullptr;
};

HttpTransport::HttpTransport() : HttpTransport(Limits{}) {}

HttpTransport::HttpTransport(Limits limits) : parts_(std::make_unique<Parts>()) {
  parts_->limits = limits;
  parts_->network = new HttpNetwork;
  parts_->thread.setObjectName("network");
  parts_->network->moveToThread(&parts_->thread);
  parts_->thread.start();
}

HttpTransport::~HttpTransport() {
  // Queued behind every request that was sent, so that none is forgotten.
  QMetaObject::invokeMethod(
      parts_->network,
      [this] {
        parts_->network->cancelAll();
        delete parts_->network;
        parts_->thread.quit();
      },
      Qt::QueuedConnection);
  parts_->thread.wait();
}

void HttpTransport::send(HttpRequest request, Done done) {
  QMetaObject::invokeMethod(
      parts_->network,
      [network = parts_->network, limits = parts_->limits, request = std::move(request),
       done = std::move(done)]() mutable { network->send(std::move(request), std::move(done), limits); },
      Qt::QueuedConnection);
}

}  // namespace fleetor
