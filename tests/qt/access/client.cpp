// client SERVICE: the client as it is when it has just been installed, on that service, its settings in a
// folder that goes with it. What it asks the system's browser for goes to standard output.
#include <QGuiApplication>
#include <QTemporaryDir>
#include <cstdio>

#include "../browser.h"
#include "app/client.h"
#include "support/memory_stores.h"

int main(int argc, char** argv) {
  QGuiApplication application(argc, argv);
  QGuiApplication::setApplicationName(QStringLiteral("fleetor"));
  const fleetor::Browser browser([](const QUrl& url) {
    std::puts(url.toEncoded().constData());
    std::fflush(stdout);
  });
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
