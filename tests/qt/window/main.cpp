#include <gmock/gmock.h>

#include <QGuiApplication>

#include "qt/device/wayland_seat.h"

int main(int argc, char** argv) {
  fleetor::prepareForMissingSeat();
  QGuiApplication application(argc, argv);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
