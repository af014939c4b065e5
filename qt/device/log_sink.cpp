#include "qt/device/log_sink.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <cstdlib>

namespace fleetor {
namespace {

const QString mask = QStringLiteral("***");

bool namesSecret(const QString& text) {
  for (const char* name : {"password", "token", "authorization", "bearer"})
    if (text.contains(QLatin1String(name), Qt::CaseInsensitive)) return true;
  return false;
}

QString masked(const QString& text);

QJsonValue masked(const QJsonValue& value) {
  if (value.isString()) return masked(value.toString());
  if (value.isArray()) {
    QJsonArray array;
    for (const auto& each : value.toArray())
      array.append(masked(QJsonValue(each)));
    return array;
  }
  if (!value.isObject()) return value;
  QJsonObject object = value.toObject();
  for (auto each = object.begin(); each != object.end(); ++each)
    each.value() = namesSecret(each.key()) ? QJsonValue(mask) : masked(QJsonValue(each.value()));
  return object;
}

// Where a secret ends is known in JSON only: any other text that names one is hidden whole.
QString masked(const QString& text) {
  const QJsonDocument json = QJsonDocument::fromJson(text.toUtf8());
  if (json.isNull()) return namesSecret(text) ? mask : text;
  QJsonDocument shown = json;
  if (json.isObject())
    shown.setObject(masked(QJsonValue(json.object())).toObject());
  else
    shown.setArray(masked(QJsonValue(json.array())).toArray());
  return shown == json ? text : QString::fromUtf8(shown.toJson(QJsonDocument::Compact));
}

QString maskedQuery(const QString& url) {
  const qsizetype begin = url.indexOf('?') + 1;
  if (begin == 0) return url;
  QStringList query = url.mid(begin).split('&');
  for (QString& each : query)
    if (const qsizetype name = each.indexOf('='); namesSecret(each.left(name)) && name + 1 < each.size())
      each = each.left(name + 1) + mask;
  return url.left(begin) + query.join('&');
}

// Without what a terminal would obey: the controls of ASCII, and U+0080 to U+009F.
std::string withoutControls(const std::string& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool isWide = byte == 0xC2 && static_cast<unsigned char>(text[i + 1]) < 0xA0;
    const bool isControl = (byte < 0x20 && byte != '\n' && byte != '\t') || byte == 0x7F;
    out += isWide || isControl ? '?' : text[i];
    if (isWide) ++i;
  }
  return out;
}

}  // namespace

std::string maskSecrets(std::string_view text) {
  const QString line = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  const QLatin1String request("REQUEST: ");
  if (line.startsWith(request)) {
    const QString what = line.mid(request.size());
    // No URL holds a blank: that is an answer which begins like a request.
    const bool isURL = !what.startsWith('{') && !what.contains(' ');
    return (request + (isURL ? maskedQuery(what) : masked(what))).toStdString();
  }
  static const QRegularExpression status(QStringLiteral(", \\d+$"));  // behind an answer
  const qsizetype end = line.lastIndexOf(status);
  return (masked(line.left(end)) + (end < 0 ? QString() : line.mid(end))).toStdString();
}

std::FILE* LogSink::streamFromEnvironment() {
  const char* wanted = std::getenv("FLEETOR_LOG");
  return wanted && *wanted ? stderr : nullptr;
}

void LogSink::line(std::string_view text) {
  if (!stream_) return;
  const std::string shown = withoutControls(maskSecrets(text)) + '\n';
  const std::lock_guard lock(mutex_);
  std::fwrite(shown.data(), 1, shown.size(), stream_);
  std::fflush(stream_);
}

}  // namespace fleetor
