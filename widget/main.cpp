#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QVariant>
#include <cstdio>

#include "chosen_vehicle.h"

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
  engine.setInitialProperties({{QStringLiteral("vehicle"), QVariant::fromValue(&vehicle)}});
  engine.load(QUrl(QStringLiteral("qrc:/qt/qml/FleetorWidget/Widget.qml")));
  return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
