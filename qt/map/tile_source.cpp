#include "qt/map/tile_source.h"

#include <QMetaObject>
#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QNetworkInformation>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QThread>
#include <QUrl>
#include <utility>

#include "qt/map/system_proxies.h"
#include "qt/map/tile_image.h"

namespace fleetor {
namespace {

QUrl urlOf(const std::string& pattern, const TileKey& key) {
  const std::pair<const char*, QString> values[] = {
      {"{z}", QString::number(key.id.zoom)},
      {"{x}", QString::number(key.id.x)},
      {"{y}", QString::number(key.id.y)},
      {"{scale}", QString::number(key.scale)},
      {"{r}", key.scale == 2 ? QStringLiteral("@2x") : QString()}};
  QString text = QString::fromStdString(pattern);
  for (const auto& [name, value] : values)
    text.replace(QLatin1String(name), value);
  QUrl url(text);
  url.setUserInfo({});  // would be sent as credentials
  return url;
}

}  // namespace

// Lives on the tile thread.
class TileSource::Worker final : public QObject {
 public:
  using Deliver = std::function<void(Handle, Result)>;

  Worker(const QString& folder, const std::string& userAgent, Limits limits, Deliver deliver)
      : userAgent_(QByteArray::fromStdString(userAgent)), limits_(limits), deliver_(std::move(deliver)) {
    auto* disk = new QNetworkDiskCache;
    disk->setCacheDirectory(folder);
    disk->setMaximumCacheSize(limits.diskBytes);
    manager_.setCache(disk);
    manager_.setProxyFactory(new SystemProxiesExceptLoopback);
  }

  ~Worker() override {
    while (!replies_.empty())
      cancel(replies_.begin()->first);
  }

  void load(Handle handle, const QUrl& url, Source source) {
    using Request = QNetworkRequest;
    Request request(url);
    request.setAttribute(Request::CacheLoadControlAttribute,
                         source == Source::cache ? Request::AlwaysCache : Request::PreferNetwork);
    request.setAttribute(Request::CookieLoadControlAttribute, Request::Manual);
    request.setAttribute(Request::CookieSaveControlAttribute, Request::Manual);
    request.setAttribute(Request::AuthenticationReuseAttribute, Request::Manual);
    request.setAttribute(Request::RedirectPolicyAttribute, Request::SameOriginRedirectPolicy);
    request.setMaximumRedirectsAllowed(4);
    request.setTransferTimeout(limits_.timeoutInMs);
    request.setRawHeader("User-Agent", userAgent_);

    QNetworkReply* const reply = manager_.get(request);
    replies_[handle] = reply;
    connect(reply, &QNetworkReply::readyRead, this, [this, reply] {
      if (reply->bytesAvailable() > limits_.bodyBytes) reply->abort();
    });
    connect(reply, &QNetworkReply::finished, this, [this, handle, reply] { finish(handle, *reply); });
  }

  void cancel(Handle handle) {
    const auto found = replies_.find(handle);
    if (found == replies_.end()) return;
    QNetworkReply* const reply = found->second;
    replies_.erase(found);
    reply->disconnect(this);
    reply->abort();
    reply->deleteLater();
  }

 private:
  void finish(Handle handle, QNetworkReply& reply) {
    replies_.erase(handle);
    reply.deleteLater();
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    Result result;
    result.missing = status == 404 || status == 410 || status == 204;
    if (!result.missing && reply.error() == QNetworkReply::NoError && status == 200) {
      const qint64 announced = reply.header(QNetworkRequest::ContentLengthHeader).toLongLong();
      const QByteArray body = reply.readAll();
      // The manager sometimes reports a truncated body as complete.
      if (body.size() >= announced && body.size() <= limits_.bodyBytes)
        result.image = decodeTile(body, limits_.imageSide);
      if (!result.image) manager_.cache()->remove(reply.url());
    }
    deliver_(handle, std::move(result));
  }

  QNetworkAccessManager manager_{this};  // a child, so that it moves to the tile thread too
  QByteArray userAgent_;
  Limits limits_;
  Deliver deliver_;
  std::unordered_map<Handle, QNetworkReply*> replies_;
};

TileSource::TileSource(TileAddresses server, const QString& folder)
    : TileSource(std::move(server), folder, Limits{}) {}

TileSource::TileSource(TileAddresses server, const QString& folder, Limits limits)
    : server_(std::move(server)),
      memory_(limits.memoryBytes),
      thread_(std::make_unique<QThread>()),
      worker_(new Worker(folder, server_.userAgent, limits, [this](Handle handle, Result result) {
        const auto take = [this, handle, result = std::move(result)] {
          if (const auto waiting = waiting_.extract(handle)) waiting.mapped()(result);
        };
        QMetaObject::invokeMethod(&mainThread_, take, Qt::QueuedConnection);
      })) {
  thread_->setObjectName("tiles");
  worker_->moveToThread(thread_.get());
  thread_->start();

  if (!QNetworkInformation::loadBackendByFeatures(QNetworkInformation::Feature::Reachability)) return;
  using State = QNetworkInformation::Reachability;
  QObject::connect(QNetworkInformation::instance(), &QNetworkInformation::reachabilityChanged, &mainThread_,
                   [this](State state) {
                     if (state != State::Unknown && state != State::Disconnected) back.emit();
                   });
}

TileSource::~TileSource() {
  QMetaObject::invokeMethod(
      worker_,
      [this] {
        delete worker_;
        thread_->quit();
      },
      Qt::QueuedConnection);
  thread_->wait();
}

TileLoader::Handle TileSource::load(const TileKey& key, Source source, Done done) {
  const Handle handle = ++lastHandle_;
  waiting_[handle] = std::move(done);
  const auto start = [worker = worker_, handle, source, url = urlOf(server_.urlTemplate(key.style), key)] {
    worker->load(handle, url, source);
  };
  QMetaObject::invokeMethod(worker_, start, Qt::QueuedConnection);
  return handle;
}

void TileSource::cancel(Handle handle) {
  if (waiting_.erase(handle) == 0) return;
  QMetaObject::invokeMethod(
      worker_, [worker = worker_, handle] { worker->cancel(handle); }, Qt::QueuedConnection);
}

int TileSource::minimumZoom() const {
  return 3;  // the whole world in 64 tiles; a map that shows more shrinks them
}

const std::string& TileSource::attribution(MapStyle style) const {
  return style == MapStyle::satellite ? server_.satelliteAttribution : server_.attribution;
}

}  // namespace fleetor
