// client SERVICE: the client as it is when it has just been installed, on that service, its settings in a
// folder that goes with it. What it asks the system's browser for goes to standard output.
#include <QDesktopServices>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QUrl>
#include <cstdio>

#include "app/client.h"
#include "support/memory_stores.h"

class Browser : public QObject {
  Q_OBJECT

 public Q_SLOTS:
  void open(const QUrl& url) {
    std::puts(url.toEncoded().constData());
    std::fflush(stdout);
  }
};

int main(int argc, char** argv) {
  QGuiApplication application(argc, argv);
  QGuiApplication::setApplicationName(QStringLiteral("fleetor"));
  Browser browser;
  QDesktopServices::setUrlHandler(QStringLiteral("https"), &browser, "open");
  const QTemporaryDir folder;
  if (argc != 2 || !folder.isValid()) return 2;
  const std::string path = folder.path().toStdString();
  fleetor::Client client({argv[1],
                          fleetor::Idiom::phone,
                          {{390, 844}, false},
                          path + "/standard",
                          path + "/shared",
                          path + "/tiles",
                          std::make_unique<fleetor::test::MemoryKeyStore>(),
                          "en"});
  return client.open() ? QGuiApplication::exec() : 1;
}

#include "client.moc"
