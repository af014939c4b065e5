#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QQmlApplicationEngine>
#include <QVariant>
#include <cstdio>
#include <string_view>

#include "chosen_vehicle.h"

namespace {

constexpr const char* usage =
    "Usage: fleetor-widget [--help]\n\n"
    "Shows the vehicle that was chosen in Fleetor, and its last reading.\n\n"
    "  --help  print this and end\n";

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
  if (argc > 1) {  // before anything asks for a display
    const bool isHelp = argc == 2 && std::string_view(argv[1]) == "--help";
    if (!isHelp) std::fputs("fleetor-widget: no option is known but --help\n", stderr);
    std::fputs(usage, isHelp ? stdout : stderr);
    return isHelp ? 0 : 2;
  }
  QGuiApplication application(argc, argv);
  QGuiApplication::setApplicationName(QStringLiteral("fleetor-widget"));
  QGuiApplication::setDesktopFileName(QStringLiteral("fleetor-widget"));
  fleetor::widget::ChosenVehicle vehicle(fleetor::widget::sharedSettingsFile());
  QQmlApplicationEngine engine;
  engine.setInitialProperties({{QStringLiteral("vehicle"), QVariant::fromValue(&vehicle)},
                               {QStringLiteral("texts"), translations()}});
  engine.load(QUrl(QStringLiteral("qrc:/qt/qml/FleetorWidget/Widget.qml")));
  return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
