#include "qt/device/http_exchange.h"

#include <QIODevice>
#include <QNetworkRequest>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>
#include <utility>

#include "http/system_reachability.h"

namespace fleetor {
namespace {

// The bytes of a request body, readable once. The network access manager sends a request again when a
// connection that was kept open turns out to be closed; a body that cannot be rewound stops it from doing so,
// since the service may have acted on the first copy.
class OneWayBody final : public QIODevice {
 public:
  explicit OneWayBody(std::shared_ptr<const std::string> bytes) : bytes_(std::move(bytes)) {
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
  }
  qint64 size() const override { return static_cast<qint64>(bytes_->size()); }
  bool reset() override { return false; }

 protected:
  qint64 readData(char* data, qint64 room) override {
    const qint64 count = std::min(room, size() - pos());
    if (count <= 0) return 0;
    std::memcpy(data, bytes_->data() + pos(), static_cast<std::size_t>(count));
    return count;
  }
  qint64 writeData(const char*, qint64) override { return -1; }

 private:
  std::shared_ptr<const std::string> bytes_;
};

bool equalsIgnoringCase(std::string_view left, std::string_view right) {
  return QByteArrayView(left.data(), static_cast<qsizetype>(left.size()))
             .compare(QByteArrayView(right.data(), static_cast<qsizetype>(right.size())),
                      Qt::CaseInsensitive) == 0;
}

bool isUsable(const QUrl& url) {
  return url.isValid() && !url.host().isEmpty() && (url.scheme() == u"http" || url.scheme() == u"https");
}

bool isSameOrigin(const QUrl& left, const QUrl& right) {
  const auto port = [](const QUrl& url) { return url.port(url.scheme() == u"https" ? 443 : 80); };
  return left.scheme() == right.scheme() && left.host() == right.host() && port(left) == port(right);
}

// The parser reads a few bytes past the end of a body; with that room there it needs no copy of its own.
constexpr std::size_t roomForParser = 64;

// The code for a transfer that broke; 0 when the service answered and only its status (0: none came) is an
// error.
long codeOf(QNetworkReply::NetworkError error, int status) {
  const bool answered = status != 0;
  switch (error) {
    case QNetworkReply::NoError:
      return 0;
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyTimeoutError:
      return url_error::cannotConnectToHost;
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ContentReSendError:
      return url_error::networkConnectionLost;
    case QNetworkReply::HostNotFoundError:
      return hasNetworkInterface() ? url_error::cannotFindHost : url_error::notConnectedToInternet;
    case QNetworkReply::OperationCanceledError:  // nobody else aborts a reply that is still connected to us
    case QNetworkReply::TimeoutError:
      return url_error::timedOut;
    case QNetworkReply::SslHandshakeFailedError:
      return url_error::secureConnectionFailed;
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
      return url_error::notConnectedToInternet;
    case QNetworkReply::UnknownNetworkError:  // what an address without a route ends with
      return hasNetworkInterface() ? url_error::cannotConnectToHost : url_error::notConnectedToInternet;
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::ProtocolInvalidOperationError:
      return answered ? 0 : url_error::cannotParseResponse;
    case QNetworkReply::UnknownContentError:  // an error status, or a body that could not be unpacked
      return status >= 400 ? 0 : url_error::cannotDecodeContentData;
    default:
      return answered ? 0 : url_error::networkConnectionLost;
  }
}

// The manager tries to rewind the body in two cases where nothing has to be sent again: at a redirect that
// keeps the body, though redirects are none of its business here, and (at times) when the service ends an
// answer of unstated length in the only way it can, by closing the connection. Both answers have arrived
// whole.
bool answersWhole(const QNetworkReply& reply, int status) {
  if (reply.error() != QNetworkReply::ContentReSendError || status == 0) return false;
  return status == 307 || status == 308 ||
         (!reply.hasRawHeader("Content-Length") && !reply.hasRawHeader("Transfer-Encoding"));
}

// The manager at times takes an answer for whole although the connection was closed inside its body. It drops
// the length of a packed body once it unpacks it.
bool endsTooSoon(const QNetworkReply& reply, int status, std::size_t received) {
  if (status < 200 || status == 204 || status == 304) return false;  // these announce what they do not send
  const qlonglong announced = reply.header(QNetworkRequest::ContentLengthHeader).toLongLong();
  return announced > 0 && received < static_cast<std::size_t>(announced);
}

}  // namespace

HttpExchange::HttpExchange(QNetworkAccessManager& manager, HttpRequest request, Transport::Done done,
                           HttpTransport::Limits limits)
    : manager_(manager), request_(std::move(request)), done_(std::move(done)), limits_(limits) {
  if (request_.body) body_ = std::make_shared<const std::string>(*std::exchange(request_.body, std::nullopt));
  url_ = QUrl(QString::fromStdString(request_.url), QUrl::TolerantMode);
}

void HttpExchange::start() {
  if (isUsable(url_)) {
    sendHop();
  } else {
    fail(url_error::badUrl, QStringLiteral("not an http URL"));
  }
}

void HttpExchange::cancel() {
  fail(url_error::cancelled, QStringLiteral("cancelled"));
}

void HttpExchange::sendHop() {
  QNetworkRequest hop(url_);
  hop.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
  // The manager has no cache to load from; asking for the network would add "Cache-Control" and "Pragma" to
  // what is sent.
  hop.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::PreferNetwork);
  hop.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
  hop.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
  hop.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
  hop.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
  hop.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  hop.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
  hop.setDecompressedSafetyCheckThreshold(
      -1);  // the limit on the body is ours, whatever it was compressed to
  const double ms = std::ceil(std::clamp(request_.timeoutSeconds, 0.0, 24.0 * 3600) * 1000);
  hop.setTransferTimeout(static_cast<int>(ms));

  hop.setRawHeader("User-Agent", "Fleetor");
  for (const auto& [name, value] : request_.headers)
    hop.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));

  // Named operations of the manager would add a content type of their own to a POST that has none.
  const QByteArray method = QByteArray::fromStdString(request_.method);
  // A POST without a body states its length, which is nothing, and needs the guard against a second sending
  // as well.
  if (!body_ && (method == "POST" || method == "PUT")) body_ = std::make_shared<const std::string>();
  OneWayBody* body = body_ ? new OneWayBody(body_) : nullptr;
  if (method == "GET" && !body) {
    reply_ = manager_.get(hop);
  } else {
    reply_ = manager_.sendCustomRequest(hop, method, body);
  }
  if (body) body->setParent(reply_);
  connect(reply_, &QNetworkReply::readyRead, this, [this] { read(); });
  connect(reply_, &QNetworkReply::finished, this, [this] { finishHop(); });
}

void HttpExchange::read() {
  const auto waiting = static_cast<std::size_t>(reply_->bytesAvailable());
  if (waiting == 0) return;
  std::string& body = answer_.body;
  const std::size_t old = body.size();
  if (waiting > limits_.bodyBytes - old) {
    answer_.status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    fail(url_error::dataLengthExceedsMaximum, QStringLiteral("the answer is too long"));
    return;
  }
  if (old == 0) {
    const auto announced = reply_->header(QNetworkRequest::ContentLengthHeader).toULongLong();
    body.reserve(std::min<std::size_t>(announced, limits_.bodyBytes) + roomForParser);
  }
  body.resize(old + waiting);
  const qint64 got = reply_->read(body.data() + old, static_cast<qint64>(waiting));
  body.resize(old + static_cast<std::size_t>(std::max<qint64>(got, 0)));
}

void HttpExchange::finishHop() {
  read();
  if (!done_) return;  // the last bytes were too many
  const int status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  long error = answersWhole(*reply_, status) ? 0 : codeOf(reply_->error(), status);
  if (error == 0 && endsTooSoon(*reply_, status, answer_.body.size()))
    error = url_error::networkConnectionLost;
  if (error == 0 && followRedirect(status)) return;

  answer_.status = status;
  answer_.contentType = reply_->rawHeader("Content-Type").toStdString();
  answer_.error = error;
  if (error != 0) answer_.errorDescription = reply_->errorString().toStdString();
  finish();
}

bool HttpExchange::followRedirect(int status) {
  if (status != 301 && status != 302 && status != 303 && status != 307 && status != 308) return false;
  const QByteArray location = reply_->rawHeader("Location");
  if (location.isEmpty()) return false;
  const QUrl next = url_.resolved(QUrl(QString::fromUtf8(location), QUrl::TolerantMode));
  if (!isUsable(next) || (url_.scheme() == u"https" && next.scheme() == u"http")) return false;
  if (++hops_ > limits_.redirects) {
    fail(url_error::tooManyRedirects, QStringLiteral("too many redirects"));
    return true;
  }

  const bool sameOrigin = isSameOrigin(url_, next);
  const bool becomesGet = status == 303 || (status <= 302 && request_.method == "POST");
  if (body_ && !body_->empty() && !becomesGet && !sameOrigin) {
    fail(url_error::badServerResponse,
         QStringLiteral("redirected to another origin, with a body that stays at its own"));
    return true;
  }

  auto& headers = request_.headers;
  const auto drop = [&headers](std::string_view name) {
    std::erase_if(headers, [name](const auto& header) { return equalsIgnoringCase(header.first, name); });
  };
  if (!sameOrigin) drop("Authorization");
  if (becomesGet) {
    request_.method = "GET";
    body_.reset();
    drop("Content-Type");
    drop("Content-Length");
  }
  url_ = next;
  answer_.body.clear();
  reply_->disconnect(this);
  reply_->deleteLater();
  sendHop();
  return true;
}

void HttpExchange::fail(long error, const QString& description) {
  answer_.error = error;
  answer_.errorDescription = description.toStdString();
  answer_.body.clear();
  finish();
}

void HttpExchange::finish() {
  if (!done_) return;
  if (reply_) {
    reply_->disconnect(this);
    reply_->abort();
    reply_->deleteLater();
  }
  deleteLater();
  std::exchange(done_, nullptr)(std::move(answer_));
}

}  // namespace fleetor
