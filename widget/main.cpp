#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QQmlApplicationEngine>
#include <QVariant>
#include <cstdio>

#include "chosen_vehicle.h"

namespace {

/// English texts and their translations, for the first language of the system that has any; English needs
/// none.
QVariantMap translations() {
  for (const QString& name : QLocale::system().uiLanguages()) {
    const QString code = name.section(QLatin1Char('-'), 0, 0);
    if (code == QLatin1String("en")) break;
    QFile table(QStringLiteral(":/languages/%1.json").arg(code));
    if (!table.open(QIODevice::ReadOnly)) continue;
    QGuiApplication::setLayoutDirection(QLocale(name).textDirection());
    return QJsonDocument::fromJson(table.readAll()).object().toVariantMap();
  }
  return {};
}

}  // namespace

int main(int argc, char** argv) {
  QGuiApplication application(argc, argv);
  QGuiApplication::setApplicationName(QStringLiteral("fleetor-widget"));
  QGuiApplication::setDesktopFileName(QStringLiteral("fleetor-widget"));
  if (argc > 1) {
    std::fputs("usage: fleetor-widget\nShows the vehicle that was chosen in Fleetor, and its last reading.\n",
               stderr);
    return 2;
  }
  fleetor::widget::ChosenVehicle vehicle(fleetor::widget::sharedSettingsFile());
  QQmlApplicationEngine engine;
  engine.setInitialProperties({{QStringLiteral("vehicle"), QVariant::fromValue(&vehicle)},
                               {QStringLiteral("texts"), translations()}});
  engine.load(QUrl(QStringLiteral("qrc:/qt/qml/FleetorWidget/Widget.qml")));
  return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
