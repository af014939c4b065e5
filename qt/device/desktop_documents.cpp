#include "qt/device/desktop_documents.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDir>
#include <QUrl>
#include <QUuid>
#include <utility>

#include "qt/device/save_question.h"
#include "qt/device/whole_file.h"

namespace fleetor {

namespace {

constexpr int chooserPatienceInMs = 10'000;

constexpr QLatin1String chooserService("org.freedesktop.portal.Desktop");
constexpr QLatin1String chooserPath("/org/freedesktop/portal/desktop");

/// With the user's home folder as "~".
std::string forPeople(const std::string& path) {
  const std::string home = QDir::homePath().toStdString() + '/';
  return path.starts_with(home) ? "~/" + path.substr(home.size()) : path;
}

}  // namespace

SaveQuestion::SaveQuestion(const std::string& name, Answered answered, QObject* parent)
    : QObject(parent), answered_(std::move(answered)) {
  // The answer comes from an object whose path is known before, so that none is missed.
  const QString token = QStringLiteral("fleetor") + QUuid::createUuid().toString(QUuid::Id128);
  const QString sender = bus_.baseService().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
  bus_.connect(QString(), chooserPath + QStringLiteral("/request/%1/%2").arg(sender, token),
               QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"), this,
               SLOT(respond(uint, QVariantMap)));
  QDBusMessage question = QDBusMessage::createMethodCall(chooserService, chooserPath,
                                                         QStringLiteral("org.freedesktop.portal.FileChooser"),
                                                         QStringLiteral("SaveFile"));
  question << QString() << QString()
           << QVariantMap{{QStringLiteral("handle_token"), token},
                          {QStringLiteral("current_name"), QString::fromStdString(name)}};
  auto* const reply = new QDBusPendingCallWatcher(bus_.asyncCall(question, chooserPatienceInMs), this);
  connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply] {
    if (QDBusPendingReply<QDBusObjectPath>(*reply).isError()) answer(Answer::noPortal);
  });
}

void SaveQuestion::respond(uint response, const QVariantMap& results) {
  constexpr uint success = 0, cancelled = 1;
  if (response == cancelled) return answer(Answer::cancelled);
  const QStringList urls = results.value(QStringLiteral("uris")).toStringList();
  const QString path = urls.isEmpty() ? QString() : QUrl(urls.constFirst()).toLocalFile();
  if (response != success || path.isEmpty()) return answer(Answer::noPortal);
  answer(Answer::chosen, path.toStdString());
}

void SaveQuestion::answer(Answer answer, const std::string& path) {
  if (const auto answered = std::exchange(answered_, nullptr)) answered(answer, path);
  deleteLater();
}

DesktopDocuments::DesktopDocuments(Queues& queues, std::string folder, Printer printer)
    : queues_(queues),
      folder_(std::move(folder)),
      printer_(std::move(printer)),
      questions_(std::make_unique<QObject>()) {}

DesktopDocuments::~DesktopDocuments() = default;

void DesktopDocuments::save(NewDocument document, Done done) {
  if (!QDBusConnection::sessionBus().isConnected()) return saveInFolder(std::move(document), std::move(done));
  const std::string name = document.name;
  new SaveQuestion(
      name,
      [this, document = std::move(document), done = std::move(done)](SaveQuestion::Answer answer,
                                                                     const std::string& path) {
        switch (answer) {
          case SaveQuestion::Answer::chosen:
            return write(document, path, true, done);
          case SaveQuestion::Answer::cancelled:
            return done(SaveOutcome::cancelled, {});
          case SaveQuestion::Answer::noPortal:
            return saveInFolder(document, done);
        }
      },
      questions_.get());
}

void DesktopDocuments::saveInFolder(NewDocument document, Done done) {
  QDir().mkpath(QString::fromStdString(folder_));
  const std::string path = folder_ + '/' + document.name;
  write(std::move(document), path, false, std::move(done));
}

void DesktopDocuments::write(NewDocument document, std::string path, bool replace, Done done) {
  queues_.global([&queues = queues_, document = std::move(document), path = std::move(path), replace,
                  done = std::move(done)]() mutable {
    const SaveOutcome outcome = writeWholeFile(path, replace, document.write);
    queues.main(
        [done = std::move(done), outcome,
         place = outcome == SaveOutcome::saved ? forPeople(path) : std::string()] { done(outcome, place); });
  });
}

}  // namespace fleetor
