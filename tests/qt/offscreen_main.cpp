#include <gmock/gmock.h>

#include <QGuiApplication>

// Pictures, texts and colours are drawn by a plug-in of the platform, which wants an application, but no
// display.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
