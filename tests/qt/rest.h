#pragma once

#include <QElapsedTimer>
#include <QQuickWindow>
#include <QTest>

namespace fleetor {

/// Waits until the window has drawn nothing for a fifth of a second: whatever moved is at rest. False after
/// ten seconds.
inline bool comesToRest(QQuickWindow& window) {
  QElapsedTimer still;
  still.start();
  const auto drawn =
      QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [&] { still.restart(); });
  const bool rests = QTest::qWaitFor([&] { return still.elapsed() > 200; }, 10'000);
  QObject::disconnect(drawn);
  return rests;
}

}  // namespace fleetor
