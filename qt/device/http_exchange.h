#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QUrl>
#include <memory>
#include <string>

#include "qt/device/http_transport.h"

namespace fleetor {

/// One request of the transport, through all of its redirects, until `done` has been called; then it deletes
/// itself. Lives on the network thread.
class HttpExchange final : public QObject {
 public:
  HttpExchange(QNetworkAccessManager& manager, HttpRequest request, Transport::Done done,
               HttpTransport::Limits limits);

  void start();
  void cancel();  ///< calls `done` with url_error::cancelled, unless it has been called

 private:
  void sendHop();
  void read();
  void finishHop();
  bool followRedirect(int status);
  void fail(long error, const QString& description);
  void finish();

  QNetworkAccessManager& manager_;
  HttpRequest request_;
  Transport::Done done_;
  HttpTransport::Limits limits_;
  std::shared_ptr<const std::string> body_;  // shared with the reader that a reply still to be deleted has
  QUrl url_;
  QNetworkReply* reply_ = nullptr;
  int hops_ = 0;
  HttpReply answer_;
};

}  // namespace fleetor
