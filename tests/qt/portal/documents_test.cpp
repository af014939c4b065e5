#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

#include "qt/device/desktop_documents.h"
#include "qt/device/queues.h"
#include "run_until.h"
#include "support/testing.h"

namespace fleetor {
namespace {

/// A desktop's file chooser: the user answers with that code and file, or there is no chooser.
class FakeChooser : public QDBusVirtualObject {
 public:
  explicit FakeChooser(std::optional<uint> answer, QString file = {})
      : answer_(answer), file_(std::move(file)) {
    EXPECT_TRUE(bus_.registerVirtualObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                                           QDBusConnection::SingleNode));
    EXPECT_TRUE(bus_.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
  }
  ~FakeChooser() override { QDBusConnection::disconnectFromBus(bus_.name()); }

  bool handleMessage(const QDBusMessage& question, const QDBusConnection& bus) override {
    if (!answer_ || question.member() != u"SaveFile") return false;
    const auto options = qdbus_cast<QVariantMap>(question.arguments().at(2));
    proposed = options.value(QStringLiteral("current_name")).toString().toStdString();
    const QString path = QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2")
                             .arg(question.service().mid(1).replace(u'.', u'_'),
                                  options.value(QStringLiteral("handle_token")).toString());
    bus.send(question.createReply(QVariant::fromValue(QDBusObjectPath(path))));
    QDBusMessage response = QDBusMessage::createSignal(path, QStringLiteral("org.freedesktop.portal.Request"),
                                                       QStringLiteral("Response"));
    response << *answer_
             << QVariantMap{{QStringLiteral("uris"), QStringList{QUrl::fromLocalFile(file_).toString()}}};
    return bus.send(response);
  }

  QString introspect(const QString&) const override { return {}; }

  std::string proposed;

 private:
  std::optional<uint> answer_;
  QString file_;
  QDBusConnection bus_ =
      QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("chooser"));
};

struct Saved {
  std::optional<SaveOutcome> outcome;
  std::string place;
};

Saved save(const QString& folder) {
  QtQueues queues;
  DesktopDocuments documents(queues, folder.toStdString(), {});
  Saved saved;
  documents.save({"Van.gpx", [](const PieceSink& sink) { return sink("track"); }},
                 [&](SaveOutcome outcome, const std::string& place) {
                   saved = {outcome, place};
                 });
  EXPECT_FALSE(saved.outcome) << "nothing is waited for";
  runUntil([&] { return saved.outcome.has_value(); });
  return saved;
}

TEST(FileChooser, IsAskedForThePlace) {
  const QTemporaryDir folder;
  const QString chosen = folder.filePath(QStringLiteral("my track.gpx"));
  FakeChooser chooser(0, chosen);
  const Saved saved = save(folder.filePath(QStringLiteral("documents")));
  EXPECT_EQ(saved.outcome, SaveOutcome::saved);
  EXPECT_EQ(saved.place, chosen.toStdString());
  EXPECT_EQ(chooser.proposed, "Van.gpx");
  QFile file(chosen);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), "track");
}

TEST(FileChooserCancelled, SavesNothing) {
  const QTemporaryDir folder;
  const FakeChooser chooser(1);
  EXPECT_EQ(save(folder.path()).outcome, SaveOutcome::cancelled);
  EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(NoFileChooser, SavesInTheFolderForDocuments) {
  const QTemporaryDir folder;
  const FakeChooser chooser(std::nullopt);
  const Saved saved = save(folder.filePath(QStringLiteral("documents")));
  EXPECT_EQ(saved.outcome, SaveOutcome::saved);
  EXPECT_EQ(saved.place, folder.filePath(QStringLiteral("documents/Van.gpx")).toStdString());
}

}  // namespace
}  // namespace fleetor
