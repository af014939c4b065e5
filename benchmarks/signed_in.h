#pragma once

// What the benches of the whole client share: a demo service beside them, and a client that is signed in
// there.

#include <QByteArray>
#include <QCoreApplication>
#include <QEventLoop>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <memory>
#include <string>

#include "app/client.h"
#include "qt/device/file_settings.h"
#include "service/api.h"
#include "support/find_screen.h"
#include "support/memory_stores.h"
#include "ui/table/table_view.h"

namespace fleetor::bench {

/// The demo service at a free port, with the town of seed 7, as long as this object lives.
class DemoService {
 public:
  explicit DemoService(const QStringList& options = {}) {
    process_.start(QCoreApplication::applicationDirPath() + "/../demo/fleetor-demo-service",
                   options + QStringList{"--port", "0", "--seed", "7"});
    if (process_.waitForReadyRead(10000))
      url_ = QString::fromUtf8(process_.readLine()).trimmed().section(' ', -1);
    const QJsonObject answer =
        ask("/token?grant_type=password", "username=demo&password=demo&uid=bench").object();
    token_ = answer["token"]["access_token"].toString();
  }
  ~DemoService() {
    process_.terminate();
    process_.waitForFinished(5000);
  }
  DemoService(const DemoService&) = delete;
  DemoService& operator=(const DemoService&) = delete;

  const QString& url() const { return url_; }
  const QString& token() const { return token_; }  ///< empty: there is no service

  /// The answer to a form, or, without one, to a GET.
  QJsonDocument ask(const QString& path, const QByteArray& form = {}) {
    QNetworkRequest request(QUrl(url_ + path));
    request.setRawHeader("Content-Type", "application/x-www-form-urlencoded");
    request.setRawHeader("Authorization", "Bearer " + token_.toUtf8());
    const std::unique_ptr<QNetworkReply> reply(form.isEmpty() ? network_.get(request)
                                                              : network_.post(request, form));
    QEventLoop loop;
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    return QJsonDocument::fromJson(reply->readAll());
  }

 private:
  QProcess process_;
  QNetworkAccessManager network_;
  QString url_;
  QString token_;
};

/// A client whose user agreed to the terms and signed in earlier; it keeps its files in that folder.
inline std::unique_ptr<Client> signedInClient(const std::string& url, const std::string& token,
                                              const std::string& folder) {
  const std::string standard = folder + "/standard.json";
  {
    FileSettings settings(standard);
    for (const char* flag : {"FirstRun", "TermsAccepted"})
      settings.setObject(std::string(flag), flag);
    settings.synchronize();
  }
  auto client = std::make_unique<Client>(Client::Setup{url,
                                                       Idiom::phone,
                                                       {},
                                                       standard,
                                                       folder + "/shared.json",
                                                       folder + "/tiles",
                                                       std::make_unique<test::MemoryKeyStore>()});
  API::keychain().setObject(token, sec::valueData);
  return client;
}

template <class Screen>
Screen* screenOf(Client& client) {
  return test::findScreen<Screen>(client.application().window().rootViewController().get());
}

}  // namespace fleetor::bench
